// Keys by the desktop's portal, over the real one, GNOME's part of it and its dialog.
#include "GnomePasteFixture.h"

#include <platform/fake/FakeUserDefaults.h>
#include <platform/linux/desktop/LastingBus.h>
#include <platform/linux/portal/PortalBackends.h>
#include <platform/linux/portal/PortalRemoteDesktop.h>

#include <QFile>

namespace tulvane::test {

namespace {

using State = PortalRemoteDesktop::State;

constexpr int escape = 1;
constexpr int tab = 15;
constexpr int letterS = 31;
constexpr int leftAlt = 56;
constexpr int space = 57;

class GnomePortalTest : public GnomePasteTest {
protected:
    void SetUp() override
    {
        GnomePasteTest::SetUp();
        if (!desktop)
            return;
        if (!QFile::exists(QStringLiteral("/usr/share/xdg-desktop-portal/portals/gnome.portal")))
            GTEST_SKIP() << "not installed: xdg-desktop-portal-gnome";
        portal = std::make_shared<PortalRemoteDesktop>(std::make_shared<LastingBus>(desktop->bus()), defaults,
                                                       QList<quint32>());
        pressBy(portal);
        startField();
        ASSERT_TRUE(waitUntil([this] { return hasFocus(); }));
    }
    [[nodiscard]] bool comesTo(State state, std::chrono::milliseconds time = defaultTimeout) const
    {
        return waitUntil([&] { return portal->state() == state; }, time);
    }
    /// The dialog is there once it has taken the focus.
    void ask()
    {
        portal->ask();
        ASSERT_TRUE(waitUntil([this] { return !hasFocus(); }));
    }
    /// Once the dialog has the keyboard.
    void decline()
    {
        EXPECT_TRUE(waitUntil([this] {
            desktop->press({escape});
            return comesTo(State::declined, std::chrono::milliseconds(500));
        }));
    }

    std::shared_ptr<FakeUserDefaults> defaults = std::make_shared<FakeUserDefaults>();
    std::shared_ptr<PortalRemoteDesktop> portal;
};

TEST_F(GnomePortalTest, WhatTheUserDeclinesIsNotPressedAndWhatTheyAllowIs)
{
    EXPECT_TRUE(hasPortalBackend(QStringLiteral("RemoteDesktop"), desktop->environment()));
    ask();
    decline();
    ASSERT_TRUE(waitUntil([this] { return hasFocus(); }));
    const QString said = QStringLiteral("Åpne «døra» 😀 nå. ");
    ASSERT_TRUE(pasteboards->general().replace({PasteboardItem::text(said)}));
    EXPECT_FALSE(await(keys->paste({})));
    EXPECT_EQ(text(), QString());

    ask();
    // The switch is behind the button to cancel; the one to share has a letter of its own.
    EXPECT_TRUE(waitUntil([this] {
        desktop->press({tab});
        desktop->press({space});
        desktop->press({leftAlt, letterS});
        return comesTo(State::granted, std::chrono::milliseconds(1500));
    }));
    ASSERT_TRUE(waitUntil([this] { return hasFocus(); }));
    EXPECT_TRUE(await(keys->paste({})));
    EXPECT_TRUE(waitUntil([&] { return text() == said; })) << qPrintable(text());
    EXPECT_TRUE(waitUntil([this] { return isRead(); }));
    EXPECT_TRUE(await(keys->typeSpaces(2)));
    EXPECT_TRUE(waitUntil([&] { return text() == said + QStringLiteral("  "); }));
    EXPECT_TRUE(defaults->value(PortalRemoteDesktop::allowedKey).toBool());
}

} // namespace

} // namespace tulvane::test
