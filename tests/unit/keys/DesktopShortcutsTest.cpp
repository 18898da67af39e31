#include "KeysByName.h"

#include <platform/linux/keys/DesktopShortcuts.h>
#include <platform/linux/keys/ShortcutFiles.h>
#include <ports/KeyModifiers.h>
#include <support/ScratchFolder.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tulvane {

namespace {

using test::keyByName;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr KeyCombination altF2{120, carbon::option};
constexpr KeyCombination altF4{118, carbon::option};
constexpr KeyCombination altSpace{49, carbon::option};
constexpr KeyCombination superE{14, carbon::command};

SymbolicHotkey hotkey(const KeyCombination& combination, const char* title, bool enabled = true)
{
    return {enabled, combination, QString::fromUtf8(title)};
}

TEST(KdeShortcuts, AreThoseInForce)
{
    const QByteArray file = "[kwin]\n"
                            "_k_friendly_name=Alt+F2,none,KWin\n"
                            "Window Close=Alt+F4\\tMeta+E,Alt+F4,Close Window\n"
                            "Walk=none,Alt+Tab,Walk Through Windows\n"
                            "Menu=Alt+Space,none\n"
                            "Odd=Meta+\\,,none,A comma\\, in the title\n"
                            "=Alt+F2,none,no name\n"
                            "nonsense\n";
    EXPECT_THAT(readKdeShortcuts(file, keyByName),
                ElementsAre(hotkey(altF4, "Close Window"), hotkey(superE, "Close Window"),
                            hotkey(altSpace, "Menu"),
                            hotkey({43, carbon::command}, "A comma, in the title")));
}

QByteArray xfce(const QByteArray& commands)
{
    return R"(<?xml version="1.0"?><channel name="xfce4-keyboard-shortcuts" version="1.0">)"
           R"(<property name="commands" type="empty">)" +
           commands + R"(</property></channel>)";
}

TEST(XfceShortcuts, AreTheDefaultsAndTheUsersOwn)
{
    const QByteArray file = xfce(
        R"(<property name="default" type="empty"><property name="&lt;Alt&gt;F2" type="string" value="finder">)"
        R"(<property name="startup-notify" type="bool" value="true"/></property></property>)"
        R"(<property name="custom" type="empty"><property name="&lt;Super&gt;e" type="string" value="files"/>)"
        R"(<property name="&lt;Alt&gt;F4" type="string" value=""/></property>)");
    EXPECT_THAT(readXfceShortcuts(file, keyByName),
                ElementsAre(hotkey(altF2, "finder"), hotkey(superE, "files"), hotkey(altF4, "", false)));
}

TEST(XfceShortcuts, OfTheUserMayReplaceTheDefaults)
{
    const QByteArray file = xfce(
        R"(<property name="default" type="empty"><property name="&lt;Alt&gt;F2" type="string" value="a"/></property>)"
        R"(<property name="custom" type="empty"><property name="&lt;Super&gt;e" type="string" value="files"/>)"
        R"(<property name="override" type="bool" value="true"/></property>)");
    EXPECT_THAT(readXfceShortcuts(file, keyByName), ElementsAre(hotkey(superE, "files")));
}

TEST(XfceShortcuts, ADamagedFileGivesWhatCanBeRead)
{
    EXPECT_THAT(readXfceShortcuts("<channel><property name=", keyByName), IsEmpty());
    EXPECT_THAT(readXfceShortcuts("", keyByName), IsEmpty());
}

TEST(OpenboxShortcuts, AreTheFirstKeysOfItsBindings)
{
    const QByteArray file =
        "<openbox_config xmlns=\"http://openbox.org/3.4/rc\"><keyboard><chainQuitKey>C-g</chainQuitKey>"
        "<keybind key=\"A-space\"><action name=\"ShowMenu\"><menu>client-menu</menu></action>"
        "<action name=\"Second\"/></keybind>"
        "<keybind key=\"W-e t\"><action name=\"Chained\"/></keybind>"
        "<keybind key=\"A-F4\"><keybind key=\"A-F2\"><action name=\"Nested\"/></keybind></keybind>"
        "<keybind key=\"A-NoSuchKey\"><action name=\"Nowhere\"/></keybind>"
        "</keyboard></openbox_config>";
    EXPECT_THAT(
        readOpenboxShortcuts(file, keyByName),
        ElementsAre(hotkey(altSpace, "ShowMenu"), hotkey(superE, "Chained"), hotkey(altF4, "Nested")));
}

class DesktopShortcutsTest : public testing::Test {
protected:
    void write(const QString& path, const QByteArray& content)
    {
        QDir().mkpath(QFileInfo(m_folder.file(path)).path());
        m_folder.write(path, content);
    }
    [[nodiscard]] std::optional<QList<SymbolicHotkey>> read(const char* desktop,
                                                            const char* windowManager) const
    {
        const DesktopFolders folders{QString::fromUtf8(desktop),
                                     m_folder.file(QStringLiteral("home")),
                                     {m_folder.file(QStringLiteral("etc"))}};
        return readDesktopShortcuts(folders, QString::fromUtf8(windowManager), keyByName);
    }

    test::ScratchFolder m_folder;
};

TEST_F(DesktopShortcutsTest, AreReadFromTheFileOfTheDesktopThatRuns)
{
    write(QStringLiteral("home/kglobalshortcutsrc"), "Run=Alt+F2,none,kde\n");
    write(QStringLiteral("home/xfce4/xfconf/xfce-perchannel-xml/xfce4-keyboard-shortcuts.xml"),
          xfce(R"(<property name="default"><property name="&lt;Alt&gt;F2" value="xfce"/></property>)"));
    write(QStringLiteral("home/openbox/rc.xml"),
          R"(<k><keybind key="A-F2"><action name="openbox"/></keybind></k>)");
    write(QStringLiteral("home/openbox/lxde-rc.xml"),
          R"(<k><keybind key="A-F2"><action name="lxde"/></keybind></k>)");
    EXPECT_THAT(*read("KDE", "KWin"), ElementsAre(hotkey(altF2, "kde")));
    EXPECT_THAT(*read("XFCE", "Xfwm4"), ElementsAre(hotkey(altF2, "xfce")));
    EXPECT_THAT(*read("other:Xfce", ""), ElementsAre(hotkey(altF2, "xfce")));
    EXPECT_THAT(*read("", "Openbox"), ElementsAre(hotkey(altF2, "openbox")));
    EXPECT_THAT(*read("LXDE", "Openbox"), ElementsAre(hotkey(altF2, "lxde")));
}

TEST_F(DesktopShortcutsTest, TheUsersFileComesBeforeTheSystems)
{
    write(QStringLiteral("etc/openbox/rc.xml"), R"(<k><keybind key="A-F2"/></k>)");
    EXPECT_THAT(*read("", "Openbox"), ElementsAre(hotkey(altF2, "")));
    write(QStringLiteral("home/openbox/rc.xml"), R"(<k><keybind key="A-F4"/></k>)");
    EXPECT_THAT(*read("", "Openbox"), ElementsAre(hotkey(altF4, "")));
}

TEST_F(DesktopShortcutsTest, NothingIsSaidOfADesktopThatCannotBeRead)
{
    EXPECT_EQ(read("KDE", "KWin"), std::nullopt);
    EXPECT_EQ(read("GNOME", "Mutter"), std::nullopt);
    EXPECT_EQ(read("", ""), std::nullopt);
}

TEST(DesktopFolders, AreThoseOfTheEnvironment)
{
    QProcessEnvironment environment;
    environment.insert(QStringLiteral("HOME"), QStringLiteral("/home/u"));
    DesktopFolders folders = DesktopFolders::fromEnvironment(environment);
    EXPECT_EQ(folders.configHome, QStringLiteral("/home/u/.config"));
    EXPECT_EQ(folders.configDirs, QStringList{QStringLiteral("/etc/xdg")});
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), QStringLiteral("/c"));
    environment.insert(QStringLiteral("XDG_CONFIG_DIRS"), QStringLiteral("/a:/b"));
    environment.insert(QStringLiteral("XDG_CURRENT_DESKTOP"), QStringLiteral("KDE"));
    folders = DesktopFolders::fromEnvironment(environment);
    EXPECT_EQ(folders.configHome, QStringLiteral("/c"));
    EXPECT_EQ(folders.configDirs, (QStringList{QStringLiteral("/a"), QStringLiteral("/b")}));
    EXPECT_EQ(folders.currentDesktop, QStringLiteral("KDE"));
}

} // namespace

} // namespace tulvane
