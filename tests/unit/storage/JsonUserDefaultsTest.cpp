#include "DefaultsFolder.h"

#include <base/FileLock.h>

#include <QElapsedTimer>

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace tulvane {
namespace {

using namespace std::chrono_literals;

struct JsonUserDefaultsFile : ::testing::Test, test::DefaultsFolder {
    test::LogCapture log;
};

TEST_F(JsonUserDefaultsFile, LooksForTheFolderWhereTheDesktopKeepsIt)
{
    const QByteArray before = qgetenv("XDG_CONFIG_HOME");
    qputenv("XDG_CONFIG_HOME", folder.path().toUtf8());
    EXPECT_EQ(JsonUserDefaults::standardFolder(), folder.path());
    qunsetenv("XDG_CONFIG_HOME");
    EXPECT_EQ(JsonUserDefaults::standardFolder(), QDir::homePath() + u"/.config");
    if (!before.isNull())
        qputenv("XDG_CONFIG_HOME", before);
}

TEST_F(JsonUserDefaultsFile, ReadingMakesNoFileAndWritingMakesTheFolder)
{
    const QString config = folder.file(u"home/config"_qs);
    JsonUserDefaults defaults(config, domain, clock);
    EXPECT_FALSE(defaults.contains(u"a"_qs));
    EXPECT_FALSE(QFile::exists(config));
    ASSERT_TRUE(defaults.set(u"a"_qs, 1));
    struct stat state{};
    ASSERT_EQ(::stat(QFile::encodeName(config).constData(), &state), 0);
    EXPECT_EQ(state.st_mode & 0777, 0700U);
    ASSERT_EQ(::stat(QFile::encodeName(defaults.filePath()).constData(), &state), 0);
    EXPECT_EQ(state.st_mode & 0777, 0600U);
}

TEST_F(JsonUserDefaultsFile, OneKeyChangesAndTheRestStaysToTheLetter)
{
    write("{\n  \"z\": 1.0,\n  \"playSounds\": false,\n  \"a\": [\n    1\n  ]\n}\n");
    JsonUserDefaults defaults = open();
    ASSERT_TRUE(defaults.set(u"playSounds"_qs, true));
    EXPECT_EQ(content(), "{\n  \"z\": 1.0,\n  \"playSounds\": true,\n  \"a\": [\n    1\n  ]\n}\n");
    EXPECT_TRUE(neighbours().isEmpty()) << qPrintable(neighbours().join(u' '));
}

TEST_F(JsonUserDefaultsFile, AnEditByHandIsKeptByTheNextWrite)
{
    JsonUserDefaults defaults = open();
    ASSERT_TRUE(defaults.set(u"a"_qs, 1));
    write(R"({"a": 5, "typed": "by hand"})");
    EXPECT_EQ(defaults.value(u"typed"_qs), u"by hand"_qs);
    ASSERT_TRUE(defaults.set(u"b"_qs, 2));
    EXPECT_EQ(open().value(u"a"_qs), QVariant(qint64{5}));
    EXPECT_EQ(open().value(u"typed"_qs), u"by hand"_qs);
}

TEST_F(JsonUserDefaultsFile, WhatCouldNotBeReadAgainIsNotWritten)
{
    JsonUserDefaults defaults = open();
    ASSERT_TRUE(defaults.set(u"a"_qs, 1));
    const auto result = defaults.set(u"vocabularyPrompt"_qs, QString(17 << 20, u'x'));
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error(), DefaultsError::notWritten(path(), qt_error_string(EFBIG)));
    EXPECT_TRUE(defaults.set(u"b"_qs, 2)) << "the next values are stored";
    EXPECT_EQ(open().value(u"a"_qs), QVariant(qint64{1}));
    EXPECT_EQ(open().value(u"b"_qs), QVariant(qint64{2}));
}

TEST_F(JsonUserDefaultsFile, ADeletedFileReadsAsEmpty)
{
    JsonUserDefaults defaults = open();
    ASSERT_TRUE(defaults.set(u"a"_qs, 1));
    ASSERT_TRUE(QFile::remove(path()));
    EXPECT_FALSE(defaults.contains(u"a"_qs));
    ASSERT_TRUE(defaults.set(u"b"_qs, 2));
    EXPECT_EQ(content(), "{\n  \"b\": 2\n}\n");
}

TEST_F(JsonUserDefaultsFile, ASymbolicLinkStaysOneAndItsTargetIsWritten)
{
    ASSERT_TRUE(QDir(folder.path()).mkdir(u"dotfiles"_qs));
    const QString target = folder.write(u"dotfiles/tulvane.json"_qs, "{\"a\": 1}");
    ASSERT_TRUE(QFile::link(u"dotfiles/tulvane.json"_qs, path()));
    JsonUserDefaults defaults = open();
    ASSERT_TRUE(defaults.set(u"b"_qs, 2));
    EXPECT_TRUE(QFileInfo(path()).isSymLink());
    EXPECT_EQ(folder.read(u"dotfiles/tulvane.json"_qs), "{\n  \"a\": 1,\n  \"b\": 2\n}\n");
    ASSERT_TRUE(QFile::remove(target));
    ASSERT_TRUE(defaults.set(u"c"_qs, 3));
    EXPECT_TRUE(QFileInfo(path()).isSymLink());
    EXPECT_EQ(folder.read(u"dotfiles/tulvane.json"_qs), "{\n  \"c\": 3\n}\n");
}

TEST_F(JsonUserDefaultsFile, TwoWaysToOneFileShareOneLock)
{
    write("{}");
    ASSERT_TRUE(QDir(folder.path()).mkdir(u"other"_qs));
    ASSERT_TRUE(QFile::link(path(), folder.file(u"other/"_qs + name)));
    JsonUserDefaults viaLink(folder.file(u"other"_qs), domain, clock);
    viaLink.setLockTimeout(0ms);
    const auto lock = FileLock::acquire(path() + u".lock", 0ms);
    ASSERT_TRUE(lock);
    EXPECT_FALSE(viaLink.set(u"a"_qs, 1));
}

TEST_F(JsonUserDefaultsFile, AWriteThatWaitsInVainFailsAndIsLogged)
{
    JsonUserDefaults defaults = open();
    defaults.setLockTimeout(10ms);
    const auto lock = FileLock::acquire(path() + u".lock", 0ms);
    ASSERT_TRUE(lock);
    const auto result = defaults.set(u"language"_qs, u"nn"_qs);
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error(), DefaultsError::notWritten(path(), qt_error_string(EBUSY)));
    const QStringList errors = log.texts("settings", QtCriticalMsg);
    ASSERT_EQ(errors.size(), 1);
    EXPECT_TRUE(errors.first().startsWith(u"Could not save language to " + path()))
        << qPrintable(errors.first());
    EXPECT_EQ(defaults.value(u"language"_qs), u"nn"_qs);
}

TEST_F(JsonUserDefaultsFile, AFolderThatCannotBeMadeFailsTheWriteAndTheValueHolds)
{
    const QString config = folder.write(u"config"_qs, "a file where the folder should be");
    JsonUserDefaults defaults(config, domain, clock);
    EXPECT_FALSE(defaults.contains(u"a"_qs));
    const auto result = defaults.set(u"a"_qs, 1);
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error().kind(), DefaultsError::Kind::notWritten);
    EXPECT_EQ(defaults.value(u"a"_qs), QVariant(qint64{1}));
    EXPECT_EQ(folder.read(u"config"_qs), "a file where the folder should be");
}

TEST_F(JsonUserDefaultsFile, ADirectoryUnderTheFilesNameIsUnreadableAndStays)
{
    ASSERT_TRUE(QDir().mkdir(path()));
    JsonUserDefaults defaults = open();
    EXPECT_FALSE(defaults.contains(u"a"_qs));
    const QList<DefaultsError> told = troubles(defaults);
    ASSERT_EQ(told.size(), 1);
    EXPECT_EQ(told.first(), DefaultsError::unreadable(path(), qt_error_string(EISDIR)));
    EXPECT_FALSE(defaults.set(u"a"_qs, 1));
    EXPECT_TRUE(QFileInfo(path()).isDir());
    EXPECT_TRUE(neighbours().isEmpty());
}

} // namespace
} // namespace tulvane
