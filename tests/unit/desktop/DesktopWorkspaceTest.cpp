#include <platform/linux/desktop/DesktopWorkspace.h>
#include <platform/linux/desktop/SettingsPages.h>
#include <support/Await.h>
#include <support/ScratchFolder.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace tulvane {

namespace {

QUrl pane(const QString& name)
{
    return QUrl(u"x-apple.systempreferences:com.apple.preference.security?Privacy_" + name);
}

/// A folder of programs that do nothing but note how they were called; it is the whole PATH.
class DesktopWorkspaceTest : public testing::Test {
protected:
    DesktopWorkspaceTest() { qputenv("PATH", m_folder.path().toUtf8()); }
    ~DesktopWorkspaceTest() override { qputenv("PATH", m_path); }

    void install(const QString& program)
    {
        const QString file =
            m_folder.write(program, "#!/bin/sh\necho \"" + program.toUtf8() + " $*\" > \"" +
                                        notes().toUtf8() + ".part\" && /bin/mv \"" + notes().toUtf8() +
                                        ".part\" \"" + notes().toUtf8() + "\"\n");
        QFile::setPermissions(file, QFile::ReadOwner | QFile::ExeOwner);
    }
    QString notes() const { return m_folder.file(u"notes"_qs); }
    /// What was started, once it was.
    QByteArray started()
    {
        EXPECT_TRUE(test::waitUntil([&] { return QFile::exists(notes()); }));
        return m_folder.read(u"notes"_qs).trimmed();
    }

    const QByteArray m_path = qgetenv("PATH");
    test::ScratchFolder m_folder;
    DesktopWorkspace m_gnome{{u"ubuntu"_qs, u"GNOME"_qs}, QUrl(u"file:///doc/permissions.html"_qs)};
};

} // namespace

TEST_F(DesktopWorkspaceTest, OpensAnOrdinaryUrlByTheDesktop)
{
    install(u"xdg-open"_qs);
    EXPECT_TRUE(m_gnome.open(QUrl(u"https://example.org/a b?c=å"_qs)));
    EXPECT_EQ(started(), "xdg-open https://example.org/a%20b?c=%C3%A5");
}

TEST_F(DesktopWorkspaceTest, OpensTheDesktopsNearestSettingsPage)
{
    install(u"gnome-control-center"_qs);
    EXPECT_TRUE(m_gnome.open(pane(u"ListenEvent"_qs)));
    EXPECT_EQ(started(), "gnome-control-center keyboard");
}

TEST_F(DesktopWorkspaceTest, WithoutASettingsPageItOpensOurOwnPageAtTheRightPlace)
{
    install(u"xdg-open"_qs);
    install(u"gnome-control-center"_qs);
    EXPECT_TRUE(m_gnome.open(pane(u"Accessibility"_qs)));
    EXPECT_EQ(started(), "xdg-open file:///doc/permissions.html#accessibility");
}

TEST_F(DesktopWorkspaceTest, ASettingsProgramThatIsNotInstalledIsAsGoodAsNone)
{
    install(u"xdg-open"_qs);
    EXPECT_TRUE(m_gnome.open(pane(u"Microphone"_qs)));
    EXPECT_EQ(started(), "xdg-open file:///doc/permissions.html#microphone");
}

TEST_F(DesktopWorkspaceTest, SaysWhenNothingCanBeStarted)
{
    EXPECT_FALSE(m_gnome.open(QUrl(u"https://example.org"_qs)));
    EXPECT_FALSE(m_gnome.open(pane(u"Accessibility"_qs)));
    EXPECT_FALSE(m_gnome.reveal(m_folder.path()));
}

TEST_F(DesktopWorkspaceTest, RevealsAFolderThatIsThere)
{
    install(u"xdg-open"_qs);
    EXPECT_FALSE(m_gnome.reveal(m_folder.file(u"none"_qs)));
    EXPECT_TRUE(m_gnome.reveal(m_folder.path()));
    EXPECT_EQ(started(), "xdg-open file://" + m_folder.path().toUtf8());
}

TEST(SettingsPages, NameThePageOfEachDesktop)
{
    const auto keyboard = [](const QString& desktop) {
        return settingsPages(pane(u"ListenEvent"_qs), {desktop});
    };
    EXPECT_THAT(keyboard(u"KDE"_qs), ElementsAre(SettingsCommand{u"systemsettings"_qs, {u"kcm_keys"_qs}}));
    EXPECT_THAT(keyboard(u"XFCE"_qs), ElementsAre(SettingsCommand{u"xfce4-keyboard-settings"_qs, {}}));
    EXPECT_THAT(keyboard(u"x-cinnamon"_qs),
                ElementsAre(SettingsCommand{u"cinnamon-settings"_qs, {u"keyboard"_qs}}));
    EXPECT_THAT(keyboard(u"MATE"_qs), ElementsAre(SettingsCommand{u"mate-keybinding-properties"_qs, {}}));
    EXPECT_THAT(keyboard(u"LXQt"_qs), ElementsAre(SettingsCommand{u"lxqt-config-globalkeyshortcuts"_qs, {}}));
    EXPECT_THAT(keyboard(u"openbox"_qs), IsEmpty());
}

TEST(SettingsPages, EveryDesktopHasASoundPageAndNoneOneForPressingKeys)
{
    const SettingsCommand mixer{u"pavucontrol"_qs, {}};
    EXPECT_THAT(settingsPages(pane(u"Microphone"_qs), {}), ElementsAre(mixer));
    EXPECT_THAT(settingsPages(pane(u"Microphone"_qs), {u"GNOME"_qs}),
                ElementsAre(SettingsCommand{u"gnome-control-center"_qs, {u"sound"_qs}}, mixer));
    EXPECT_THAT(settingsPages(pane(u"Accessibility"_qs), {u"GNOME"_qs}), IsEmpty());
    EXPECT_EQ(helpSection(pane(u"ListenEvent"_qs)), u"input-monitoring"_qs);
}

} // namespace tulvane
