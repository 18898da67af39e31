#include "GnomeFixture.h"

#include <platform/linux/gnome/MutterPosting.h>
#include <platform/linux/x11/clipboard/BridgedPasteboards.h>

namespace tulvane::test {

namespace {

const QString said = QStringLiteral("Åpne «døra» 😀 nå. ");

class UnknownFront final : public FrontPrograms {
public:
    [[nodiscard]] FrontProgram current() override { return {}; }
};

class MutterPostingTest : public GnomeTest {
protected:
    void SetUp() override
    {
        GnomeTest::SetUp();
        if (!desktop)
            return;
        const QByteArray display = desktop->variable(QStringLiteral("DISPLAY")).toLocal8Bit();
        qputenv("XAUTHORITY", desktop->variable(QStringLiteral("XAUTHORITY")).toLocal8Bit());
        ASSERT_TRUE(waitUntil([&] { return (link = X11Connection::open(display)) != nullptr; }));
        keeper = SelectionOwner::start(display);
        ASSERT_NE(keeper, nullptr);
        pasteboards = std::make_unique<BridgedPasteboards>(*link, *keeper, scheduler,
                                                           std::make_shared<UnknownFront>(), PasteRules());
        MutterPosting::Hooks hooks;
        hooks.isInFront = [this](const PasteTarget&) { return isInFront; };
        hooks.pasting = [this](const PasteTarget& target) { pasteboards->expectReader(target); };
        keys = std::make_unique<MutterPosting>(desktop->bus(), hooks);
    }
    [[nodiscard]] bool isRead() const
    {
        return pasteboards->general().reading() == Pasteboard::Reading::read;
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

    std::unique_ptr<X11Connection> link;
    std::unique_ptr<SelectionOwner> keeper;
    EventLoopScheduler scheduler;
    std::unique_ptr<BridgedPasteboards> pasteboards;
    std::unique_ptr<MutterPosting> keys;
    bool isInFront = true;
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
    EXPECT_TRUE(MutterPosting::isOffered(desktop->bus()));
    EXPECT_FALSE(MutterPosting::isOffered(desktop->variable(QStringLiteral("DBUS_SYSTEM_BUS_ADDRESS"))));
}

} // namespace

} // namespace tulvane::test
