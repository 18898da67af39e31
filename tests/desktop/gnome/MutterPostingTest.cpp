#include "GnomePasteFixture.h"

#include <platform/linux/gnome/MutterRemoteDesktop.h>

namespace tulvane::test {

namespace {

const QString said = QStringLiteral("Åpne «døra» 😀 nå. ");

class MutterPostingTest : public GnomePasteTest {
protected:
    void SetUp() override
    {
        GnomePasteTest::SetUp();
        if (desktop)
            pressBy(std::make_shared<MutterRemoteDesktop>(desktop->bus()));
    }
    /// How many sessions of remote control there are; one is the test's own keyboard.
    [[nodiscard]] static qsizetype sessions()
    {
        return desktop
            ->run(QStringLiteral("gdbus"),
                  {QStringLiteral("introspect"), QStringLiteral("--session"), QStringLiteral("--dest"),
                   QStringLiteral("org.gnome.Mutter.RemoteDesktop"), QStringLiteral("--object-path"),
                   QStringLiteral("/org/gnome/Mutter/RemoteDesktop/Session")})
            .count("node u");
    }
};

TEST_F(MutterPostingTest, TextsArePastedExactlyAndTheirReadingIsTold)
{
    startField();
    QString all;
    for (int i = 0; i < 5; ++i) {
        const QString one = said + QString::number(i) + u' ';
        ASSERT_TRUE(pasteboards->general().replace({PasteboardItem::text(one)}));
        ASSERT_TRUE(await(keys->paste({})));
        EXPECT_TRUE(waitUntil([&] { return isRead(); }, std::chrono::milliseconds(2000)));
        all += one;
        EXPECT_TRUE(waitUntil([&] { return text() == all; })) << qPrintable(text());
    }
}

TEST_F(MutterPostingTest, TheDesktopsOwnClipboardManagerIsNoReader)
{
    startField();
    ASSERT_TRUE(pasteboards->general().replace({PasteboardItem::text(said)}));
    EXPECT_FALSE(waitUntil([&] { return isRead(); }, std::chrono::milliseconds(700)));
    ASSERT_TRUE(await(keys->paste({})));
    EXPECT_TRUE(waitUntil([&] { return isRead(); }));
}

TEST_F(MutterPostingTest, NothingIsPressedForAnotherProgram)
{
    startField();
    ASSERT_TRUE(pasteboards->general().replace({PasteboardItem::text(said)}));
    isInFront = false;
    EXPECT_FALSE(await(keys->paste({})));
    EXPECT_EQ(text(), QString());
}

TEST_F(MutterPostingTest, SpacesAreTypedAndNoSessionStaysOpen)
{
    startField();
    EXPECT_TRUE(await(keys->typeSpaces(3)));
    EXPECT_TRUE(waitUntil([&] { return text() == QStringLiteral("   "); }));
    EXPECT_EQ(sessions(), 1);
}

TEST_F(MutterPostingTest, TheServiceIsFoundWhereItIs)
{
    EXPECT_TRUE(MutterRemoteDesktop::isOffered(desktop->bus()));
    EXPECT_FALSE(
        MutterRemoteDesktop::isOffered(desktop->variable(QStringLiteral("DBUS_SYSTEM_BUS_ADDRESS"))));
}

TEST_F(MutterPostingTest, WhileTheScreenIsLockedTheServiceIsStillTheWay)
{
    const QString refuse = QStringLiteral("refuse_remote_control");
    desktop->perform(refuse, {QStringLiteral("yes")});
    EXPECT_FALSE(await(keys->typeSpaces(1)));
    EXPECT_TRUE(MutterRemoteDesktop::isOffered(desktop->bus()));
    desktop->perform(refuse, {QString()});
}

} // namespace

} // namespace tulvane::test
