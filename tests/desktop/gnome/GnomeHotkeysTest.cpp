#include "GnomeFixture.h"

#include <platform/linux/gnome/GnomeHotkeys.h>
#include <ports/KeyModifiers.h>

#include <QDir>
#include <QFile>

namespace tulvane::test {

namespace {

constexpr KeyCombination altSpace{49, carbon::option};
constexpr KeyCombination controlAltD{2, carbon::control | carbon::option};
constexpr HotkeyId id{0x544C564B, 1};

class GnomeHotkeysTest : public GnomeTest {
protected:
    void SetUp() override
    {
        GnomeTest::SetUp();
        if (!desktop)
            return;
        static const bool once = [] {
            desktop->perform(QStringLiteral("start_settings_daemon"));
            return true;
        }();
        Q_UNUSED(once)
        QFile::remove(desktop->home() + QStringLiteral("/runs"));
        hotkeys = std::make_unique<GnomeHotkeys>(desktop->environment(),
                                                 u"sh -c 'echo run >> " + desktop->home() + u"/runs'");
    }
    [[nodiscard]] static qsizetype runs()
    {
        QFile file(desktop->home() + QStringLiteral("/runs"));
        return file.open(QIODevice::ReadOnly) ? file.readAll().count('\n') : 0;
    }

    std::unique_ptr<GnomeHotkeys> hotkeys;
};

TEST_F(GnomeHotkeysTest, AChosenCombinationRunsTheCommandUntilItIsGivenUp)
{
    ASSERT_TRUE(hotkeys->support());
    auto taken = hotkeys->registerHotkey(id, controlAltD);
    ASSERT_TRUE(taken) << qPrintable(taken.error().description());
    EXPECT_TRUE(hotkeys->isBound());
    ASSERT_TRUE(waitUntil([&] {
        desktop->press({29, 56, 32});
        return waitUntil([&] { return runs() > 0; }, std::chrono::milliseconds(500));
    }));
    taken->reset();
    EXPECT_FALSE(hotkeys->isBound());
    EXPECT_TRUE(hotkeys->registerHotkey({id.signature, 0}, controlAltD));
    // The desktop follows its settings a moment later.
    ASSERT_TRUE(waitUntil([&] {
        const qsizetype before = runs();
        desktop->press({29, 56, 32});
        return !waitUntil([&] { return runs() > before; }, std::chrono::milliseconds(500));
    }));
}

TEST_F(GnomeHotkeysTest, ASettingsDaemonThatCrashesAndReturnsRunsTheCommandAgain)
{
    const auto taken = hotkeys->registerHotkey(id, controlAltD);
    ASSERT_TRUE(taken) << qPrintable(taken.error().description());
    desktop->perform(QStringLiteral("crash_and_return_settings_daemon"));
    EXPECT_TRUE(waitUntil([&] {
        const qsizetype before = runs();
        desktop->press({29, 56, 32});
        return waitUntil([&] { return runs() > before; }, std::chrono::milliseconds(500));
    }));
}

TEST_F(GnomeHotkeysTest, WhatTheDesktopUsesIsRefusedByName)
{
    const auto refused = hotkeys->registerHotkey(id, altSpace);
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().kind(), HotkeyError::Kind::taken);
    EXPECT_TRUE(refused.error().description().contains(QStringLiteral("GNOME (Activate the window menu)")))
        << qPrintable(refused.error().description());
    EXPECT_FALSE(hotkeys->isBound());
}

TEST_F(GnomeHotkeysTest, WhatTheDesktopUsesIsNamedAsTheDesktopNamesIt)
{
    QProcessEnvironment norwegian = desktop->environment();
    norwegian.insert(QStringLiteral("LC_ALL"), QStringLiteral("nb_NO.UTF-8"));
    norwegian.insert(QStringLiteral("LANGUAGE"), QStringLiteral("nb"));
    // As the desktop itself translates it here, which may be not at all.
    const QString words = GSettings(norwegian).describe(QStringLiteral("org.gnome.desktop.wm.keybindings"),
                                                        QStringLiteral("activate-window-menu"));
    ASSERT_FALSE(words.isEmpty());
    GnomeHotkeys there(norwegian, QStringLiteral("true"));
    const QList<SymbolicHotkey> held = there.symbolicHotkeys(altSpace);
    ASSERT_EQ(held.size(), 1);
    EXPECT_EQ(held.front().title, QStringLiteral("GNOME (%1)").arg(words));
    // What is described at length, or ends as a sentence does.
    const QList<SymbolicHotkey> lock = there.symbolicHotkeys({37, carbon::command});
    ASSERT_EQ(lock.size(), 1);
    EXPECT_FALSE(lock.front().title.contains(u'.')) << qPrintable(lock.front().title);
}

TEST_F(GnomeHotkeysTest, AKeyThatTheUserHasBoundToTheCommandIsFound)
{
    const GSettings settings(desktop->environment());
    const QString path =
        QStringLiteral("/org/gnome/settings-daemon/plugins/media-keys/custom-keybindings/custom7/");
    const auto write = [&](const QString& name, const QString& text) {
        ASSERT_TRUE(settings.set(CustomBindings::customSchema + path, name, GSettings::text(text)));
    };
    const auto isFound = [&] { return CustomBindings(settings).haveToggleBesides(GnomeHotkeys::path()); };
    EXPECT_FALSE(isFound());
    write(QStringLiteral("command"), QStringLiteral("tulvane toggle"));
    ASSERT_TRUE(settings.set(CustomBindings::mediaKeys, CustomBindings::listName, GSettings::list({path})));
    EXPECT_FALSE(isFound()) << "no key is bound to it";
    write(QStringLiteral("binding"), QStringLiteral("<Super>F9"));
    EXPECT_TRUE(isFound());
    EXPECT_FALSE(CustomBindings(settings).haveToggleBesides(path)) << "ours is not the user's";
    write(QStringLiteral("command"), QStringLiteral("tulvane status"));
    EXPECT_FALSE(isFound());
    settings.set(CustomBindings::mediaKeys, CustomBindings::listName, GSettings::list({}));
    settings.reset(CustomBindings::customSchema + path);
}

TEST_F(GnomeHotkeysTest, TheCommandIsKnownInEveryWriting)
{
    for (const char* const command : {"tulvane toggle", "/usr/bin/tulvane toggle", "'/my dir/tulvane' toggle",
                                      "sh -c 'tulvane toggle'", "env LANG=C tulvane  toggle"})
        EXPECT_TRUE(CustomBindings::isToggle(QString::fromUtf8(command))) << command;
    for (const char* const command : {"tulvane status", "nottulvane toggle", "tulvane togglex", "toggle", ""})
        EXPECT_FALSE(CustomBindings::isToggle(QString::fromUtf8(command))) << command;
}

TEST_F(GnomeHotkeysTest, OtherBindingsOfTheUsersStay)
{
    const GSettings settings(desktop->environment());
    const QString schema = QStringLiteral("org.gnome.settings-daemon.plugins.media-keys");
    const QString other =
        QStringLiteral("/org/gnome/settings-daemon/plugins/media-keys/custom-keybindings/custom0/");
    const QString custom = schema + QStringLiteral(".custom-keybinding:") + other;
    ASSERT_TRUE(settings.set(schema, QStringLiteral("custom-keybindings"), GSettings::list({other})));
    ASSERT_TRUE(settings.set(custom, QStringLiteral("name"), GSettings::text(QStringLiteral("It's mine"))));
    ASSERT_TRUE(
        settings.set(custom, QStringLiteral("binding"), GSettings::text(QStringLiteral("<Control><Alt>d"))));
    const auto refused = hotkeys->registerHotkey(id, controlAltD);
    ASSERT_FALSE(refused);
    EXPECT_TRUE(refused.error().description().contains(QStringLiteral("It's mine")));
    {
        const auto taken = hotkeys->registerHotkey(id, {101, carbon::control});
        ASSERT_TRUE(taken);
    }
    EXPECT_EQ(GSettings::textsIn(*settings.get(schema, QStringLiteral("custom-keybindings"))),
              QStringList{other});
    settings.set(schema, QStringLiteral("custom-keybindings"), GSettings::list({}));
}

TEST_F(GnomeHotkeysTest, NothingIsWrittenThatTheUserHasNotChosen)
{
    std::optional<KeyCombination> chosen;
    GnomeHotkeys careful(desktop->environment(), QStringLiteral("true"),
                         {.isMade = [&](const KeyCombination& one) { return chosen == one; },
                          .make = [&](const KeyCombination& one) { chosen = one; }});
    const GSettings settings(desktop->environment());
    const auto list = [&] {
        return GSettings::textsIn(settings
                                      .get(QStringLiteral("org.gnome.settings-daemon.plugins.media-keys"),
                                           QStringLiteral("custom-keybindings"))
                                      .value_or(QString()));
    };
    const auto refused = careful.registerHotkey(id, controlAltD);
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error(), HotkeyError::unchosen());
    EXPECT_TRUE(careful.registerHotkey({id.signature, 0}, controlAltD)) << "it is free";
    EXPECT_TRUE(list().isEmpty());
    careful.choose(controlAltD);
    const auto taken = careful.registerHotkey(id, controlAltD);
    EXPECT_TRUE(taken);
    EXPECT_EQ(list().size(), 1);
}

TEST_F(GnomeHotkeysTest, TheCommandIsOneThatAShellTakesApart)
{
    EXPECT_EQ(GnomeHotkeys::commandOf({}, QStringLiteral("toggle")), QStringLiteral("tulvane toggle"));
    EXPECT_EQ(GnomeHotkeys::commandOf(QStringLiteral("/opt/a/tulvane"), QStringLiteral("toggle")),
              QStringLiteral("/opt/a/tulvane toggle"));
    EXPECT_EQ(GnomeHotkeys::commandOf(QStringLiteral("/my dir/it's/tulvane"), QStringLiteral("toggle")),
              QStringLiteral("'/my dir/it'\\''s/tulvane' toggle"));
}

TEST_F(GnomeHotkeysTest, AKeyThatDoesNotExistIsRefused)
{
    const auto refused = hotkeys->registerHotkey(id, {1000, carbon::option});
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().kind(), HotkeyError::Kind::noSuchKey);
}

} // namespace

} // namespace tulvane::test
