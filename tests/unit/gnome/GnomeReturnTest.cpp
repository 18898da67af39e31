// What becomes of what GNOME's settings tell when the bus ends and returns.
#include "ScriptedSettings.h"

#include <platform/linux/desktop/LastingBus.h>
#include <platform/linux/desktop/OwnConnection.h>
#include <platform/linux/gnome/GnomeHotkeys.h>
#include <platform/linux/gnome/GnomeLayout.h>
#include <ports/KeyModifiers.h>
#include <support/Await.h>
#include <support/ReturningBus.h>

#include <QDBusMessage>

#include <gtest/gtest.h>

namespace tulvane::test {

namespace {

const QString inputSources = QStringLiteral("org.gnome.desktop.input-sources");
const QString mediaKeys = QStringLiteral("org.gnome.settings-daemon.plugins.media-keys");
const QString bindings = QStringLiteral("custom-keybindings");
constexpr KeyCombination controlAltD{2, carbon::control | carbon::option};

class GnomeReturnTest : public testing::Test {
protected:
    GnomeReturnTest()
    {
        settings.set(inputSources, QStringLiteral("sources"), QStringLiteral("[('xkb', 'us')]"));
        settings.set(mediaKeys, bindings, QStringLiteral("@as []"));
    }
    /// As the service behind the settings reports a change.
    void tellOfSources() const
    {
        QDBusMessage signal =
            QDBusMessage::createSignal(QStringLiteral("/ca/desrt/dconf/Writer/user"),
                                       QStringLiteral("ca.desrt.dconf.Writer"), QStringLiteral("Notify"));
        signal << QStringLiteral("/org/gnome/desktop/input-sources/")
               << QStringList{QStringLiteral("sources")} << QStringLiteral("tag");
        OwnConnection(bus.address()).bus().send(signal);
    }
    ScriptedSettings settings;
    ReturningBus bus;
    std::shared_ptr<LastingBus> lasting = std::make_shared<LastingBus>(bus.address());
};

TEST_F(GnomeReturnTest, TheInputSourceIsFollowedOverTheNewBus)
{
    GnomeLayout layout(ScriptedSettings::environment(), lasting);
    EXPECT_EQ(layout.engine(), QStringLiteral("xkb:us::eng"));
    bus.kill();
    ASSERT_TRUE(waitUntil([&] { return !lasting->connection().isConnected(); }));
    settings.set(inputSources, QStringLiteral("sources"), QStringLiteral("[('ibus', 'anthy')]"));
    bus.start();
    EXPECT_TRUE(waitUntil([&] { return layout.engine() == QStringLiteral("anthy"); }))
        << "it was changed while nothing was reported";
    settings.set(inputSources, QStringLiteral("sources"), QStringLiteral("[('ibus', 'hangul')]"));
    EXPECT_TRUE(waitUntil([&] {
        tellOfSources();
        return layout.engine() == QStringLiteral("hangul");
    }));
}

TEST_F(GnomeReturnTest, ABindingThatWasNotWrittenIsNotSaidToBe)
{
    GnomeHotkeys hotkeys(ScriptedSettings::environment(), QStringLiteral("tulvane toggle"));
    settings.setBusGone(true);
    const auto refused = hotkeys.registerHotkey({1, 1}, controlAltD);
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().kind(), HotkeyError::Kind::refused);
    EXPECT_FALSE(hotkeys.isBound());
}

TEST_F(GnomeReturnTest, WhatFailedWithoutTheBusIsTriedAgainOnceItIsBack)
{
    GnomeHotkeys hotkeys(ScriptedSettings::environment(), QStringLiteral("tulvane toggle"));
    hotkeys.follow(lasting);
    std::unique_ptr<GlobalHotkeys::Registration> token;
    // As the registry does it.
    hotkeys.setChangeHandler([&] {
        token.reset();
        if (auto taken = hotkeys.registerHotkey({1, 1}, controlAltD))
            token = std::move(*taken);
    });
    bus.kill();
    settings.setBusGone(true);
    ASSERT_TRUE(waitUntil([&] { return !lasting->connection().isConnected(); }));
    ASSERT_FALSE(hotkeys.registerHotkey({1, 1}, controlAltD));
    settings.setBusGone(false);
    bus.start();
    ASSERT_TRUE(waitUntil([&] { return token != nullptr; }));
    EXPECT_TRUE(hotkeys.isBound());
    EXPECT_TRUE(settings.get(mediaKeys, bindings).contains(QStringLiteral("/tulvane/")));
}

} // namespace

} // namespace tulvane::test
