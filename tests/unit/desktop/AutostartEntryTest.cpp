#include <platform/linux/desktop/AutostartEntry.h>
#include <support/ScratchFolder.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>

#include <gtest/gtest.h>
#include <unistd.h>

namespace tulvane::test {

namespace {

/// How a desktop reads an Exec line's first word: the file's escapes first, then the quotes.
QString programOf(const QByteArray& entry)
{
    const qsizetype start = entry.indexOf("\nExec=") + 6;
    const QString line = QString::fromUtf8(entry.mid(start, entry.indexOf('\n', start) - start));
    QString plain;
    for (qsizetype i = 0; i < line.size(); ++i) {
        if (line[i] != u'\\') {
            plain += line[i];
            continue;
        }
        ++i;
        plain += line[i] == u'n' ? QChar(u'\n') : line[i] == u's' ? QChar(u' ') : line[i];
    }
    QString word;
    for (qsizetype i = 1; i < plain.size() && plain[i] != u'"'; ++i) {
        if (plain[i] == u'\\' || (plain[i] == u'%' && plain[i + 1] == u'%'))
            ++i;
        word += plain[i];
    }
    return word;
}

class AutostartEntryTest : public testing::Test {
protected:
    [[nodiscard]] AutostartEntry entry(const QString& program = QStringLiteral("/usr/bin/tulvane")) const
    {
        return {m_folder.file(QStringLiteral("autostart")), program};
    }
    [[nodiscard]] QByteArray content() const
    {
        QFile file(entry().file());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    void write(const QByteArray& content) const
    {
        QDir().mkpath(m_folder.file(QStringLiteral("autostart")));
        m_folder.write(QStringLiteral("autostart/com.dunio.Tulvane.desktop"), content);
    }

    ScratchFolder m_folder;
};

} // namespace

TEST_F(AutostartEntryTest, MakesTheMissingFolderAndStartsTheProgramWithoutAWindow)
{
    ASSERT_TRUE(entry().setEnabled(true));
    EXPECT_TRUE(content().contains("\nExec=\"/usr/bin/tulvane\" --background\n")) << content().constData();
    EXPECT_TRUE(content().startsWith("[Desktop Entry]\nType=Application\nName=Tulvane\n"));
    ASSERT_TRUE(entry().setEnabled(false));
    EXPECT_FALSE(QFile::exists(entry().file()));
}

TEST_F(AutostartEntryTest, AnyPathComesThroughTheQuotes)
{
    for (const char* program :
         {"/opt/My Programs/tulvane", "/opt/a\"b/tulvane", "/opt/50%/tulvane", "/opt/%u/tulvane",
          "/opt/back\\slash/tulvane", "/opt/back\\\\n/tulvane", "/opt/$HOME`x`/tulvane", "/opt/it's/tulvane",
          "/opt/blåbær/tulvane", "/opt/two\nlines/tulvane", "/opt/;#=[x]/tulvane"}) {
        const QString path = QString::fromUtf8(program);
        ASSERT_TRUE(entry(path).setEnabled(true));
        EXPECT_EQ(programOf(content()), path) << content().constData();
        EXPECT_TRUE(entry(path).isEnabled());
    }
}

TEST_F(AutostartEntryTest, TheDesktopsOwnCheckerFindsNothingWrong)
{
    const QString checker = QStandardPaths::findExecutable(QStringLiteral("desktop-file-validate"));
    if (checker.isEmpty())
        GTEST_SKIP() << "desktop-file-validate is not installed";
    for (const char* program : {"/usr/bin/tulvane", "/opt/My \"50%\" $x`y`\\z/tulvane"}) {
        ASSERT_TRUE(entry(QString::fromUtf8(program)).setEnabled(true));
        QProcess check;
        check.setProcessChannelMode(QProcess::MergedChannels);
        check.start(checker, {entry().file()});
        ASSERT_TRUE(check.waitForFinished());
        EXPECT_EQ(check.exitCode(), 0);
        EXPECT_EQ(check.readAll(), QByteArray()) << program;
    }
}

TEST_F(AutostartEntryTest, WhatTheDesktopHasSwitchedOffIsOffAndCanBeSwitchedOnAgain)
{
    for (const char* line : {"Hidden=true", "Hidden = true ", "X-GNOME-Autostart-enabled=false"}) {
        write("[Desktop Entry]\nType=Application\nExec=tulvane\n" + QByteArray(line) + "\n");
        EXPECT_FALSE(entry().isEnabled()) << line;
        ASSERT_TRUE(entry().setEnabled(true));
        EXPECT_TRUE(entry().isEnabled()) << line;
    }
}

TEST_F(AutostartEntryTest, AnEntryOfTheUsersOwnCountsByWhatItSays)
{
    write("# mine\n[Desktop Entry]\nExec=tulvane --background\nHidden=false\nX-GNOME-Autostart-enabled=true\n"
          "[Desktop Action x]\nHidden=true\n");
    EXPECT_TRUE(entry().isEnabled());
    write("[Desktop Entry]\nName=Tulvane\n[Desktop Action x]\nExec=tulvane\n");
    EXPECT_FALSE(entry().isEnabled());
    write("");
    EXPECT_FALSE(entry().isEnabled());
    write("\xff\xfe\x00garbage");
    EXPECT_FALSE(entry().isEnabled());
}

TEST_F(AutostartEntryTest, AFolderThatCannotBeWrittenToIsTheReasonAndNothingChanges)
{
    // A file stands where the folder should be: that refuses the system's administrator, too.
    m_folder.write(QStringLiteral("autostart"), "not a folder");
    const auto refused = entry().setEnabled(true);
    ASSERT_FALSE(refused);
    EXPECT_FALSE(refused.error().isEmpty());
    EXPECT_FALSE(entry().isEnabled());
    EXPECT_TRUE(entry().setEnabled(false)); // is off as it is
}

TEST_F(AutostartEntryTest, AnEntryThatCannotBeRemovedStaysOnWithTheReason)
{
    // A folder of that name can be neither replaced nor removed as a file.
    QDir().mkpath(entry().file() + QStringLiteral("/inside"));
    const auto refused = entry().setEnabled(false);
    ASSERT_FALSE(refused);
    EXPECT_FALSE(refused.error().isEmpty());
    EXPECT_FALSE(entry().setEnabled(true));
}

TEST_F(AutostartEntryTest, AReadOnlyFolderIsTheReason)
{
    if (geteuid() == 0)
        GTEST_SKIP() << "the administrator may write anywhere";
    ASSERT_TRUE(entry().setEnabled(true));
    const QString folder = m_folder.file(QStringLiteral("autostart"));
    QFile::setPermissions(folder, QFile::ReadOwner | QFile::ExeOwner);
    EXPECT_FALSE(entry().setEnabled(false));
    EXPECT_TRUE(entry().isEnabled());
    QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

TEST_F(AutostartEntryTest, WithoutAFolderForSettingsThereIsAReason)
{
    const AutostartEntry nowhere(QString(), QStringLiteral("/usr/bin/tulvane"));
    EXPECT_FALSE(nowhere.isEnabled());
    AutostartEntry item(QString(), QStringLiteral("/usr/bin/tulvane"));
    const auto refused = item.setEnabled(true);
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error(), QStringLiteral("There is no folder for programs that start at login."));
}

TEST_F(AutostartEntryTest, TheStandardFolderIsTheUsers)
{
    EXPECT_TRUE(AutostartEntry::standardFolder().endsWith(QStringLiteral("/autostart")));
}

} // namespace tulvane::test
