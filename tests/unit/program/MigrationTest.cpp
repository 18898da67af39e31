#include <app/program/Migration.h>
#include <platform/fake/FakeUserDefaults.h>
#include <support/Folders.h>
#include <support/LogCapture.h>
#include <support/ScratchFolder.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace tulvane::test {

namespace {

class MigrationTest : public testing::Test {
protected:
    void run() { Migration(defaults, data.path()).run(); }
    QString oldFile(const QString& name) const { return data.file(u"Arven Scribe/"_qs + name); }
    QString newFile(const QString& name) const { return data.file(u"Tulvane/"_qs + name); }
    QStringList infos() const { return log.texts("app", QtInfoMsg); }
    QStringList errors() const { return log.texts("app", QtCriticalMsg); }
    bool isDone() const { return defaults.value(Migration::doneKey) == QVariant(true); }

    std::shared_ptr<FakeUserDefaults::Store> store = std::make_shared<FakeUserDefaults::Store>();
    FakeUserDefaults defaults{store};
    ScratchFolder data;
    LogCapture log;
};

} // namespace

TEST_F(MigrationTest, NamesAreThoseOfTheEarlierProduct)
{
    EXPECT_EQ(Migration::doneKey, u"didMigrateFromArvenscribe"_qs);
    EXPECT_EQ(Migration::oldDomain, u"com.dunio.Arvenscribe"_qs);
}

TEST_F(MigrationTest, WithNothingToBringItSaysNothingAndIsDone)
{
    run();
    EXPECT_TRUE(isDone());
    EXPECT_THAT(infos(), IsEmpty());
    EXPECT_THAT(errors(), IsEmpty());
    EXPECT_THAT(everythingIn(data.path()), IsEmpty());
    EXPECT_THAT(defaults.writes(), ElementsAre(FakeUserDefaults::Write(Migration::doneKey, true)));
}

TEST_F(MigrationTest, PreferencesComeOverWhereThereAreNone)
{
    store->insert(Migration::oldDomain, {{u"playSounds"_qs, false},
                                         {u"hotkeyMode"_qs, u"hold"_qs},
                                         {u"KeyboardShortcuts_dictate"_qs, u"{}"_qs},
                                         {u"somethingElse"_qs, 7}});
    ASSERT_TRUE(defaults.set(u"hotkeyMode"_qs, u"toggle"_qs));
    ASSERT_TRUE(defaults.set(u"showHUD"_qs, false));
    run();
    EXPECT_EQ(defaults.value(u"hotkeyMode"_qs), u"toggle"_qs);
    EXPECT_EQ(defaults.value(u"playSounds"_qs), false);
    EXPECT_EQ(defaults.value(u"KeyboardShortcuts_dictate"_qs), u"{}"_qs);
    EXPECT_EQ(defaults.value(u"somethingElse"_qs), 7);
    EXPECT_EQ(defaults.value(u"showHUD"_qs), false);
    EXPECT_THAT(infos(), ElementsAre(u"Migrated 3 preference(s) from com.dunio.Arvenscribe"_qs));
    EXPECT_TRUE(isDone());
    EXPECT_EQ(store->value(Migration::oldDomain).size(), 4); // left as it was
}

TEST_F(MigrationTest, ItNeverRunsTwice)
{
    run();
    store->insert(Migration::oldDomain, {{u"playSounds"_qs, false}});
    put(oldFile(u"statistics.json"_qs));
    run();
    EXPECT_FALSE(defaults.contains(u"playSounds"_qs));
    EXPECT_TRUE(QFile::exists(oldFile(u"statistics.json"_qs)));
    EXPECT_THAT(infos(), IsEmpty());
}

TEST_F(MigrationTest, AFlagThatIsFalseIsNoFlag)
{
    ASSERT_TRUE(defaults.set(Migration::doneKey, false));
    put(oldFile(u"a"_qs));
    run();
    EXPECT_TRUE(isDone());
    EXPECT_TRUE(QFile::exists(newFile(u"a"_qs)));
}

TEST_F(MigrationTest, TheFolderMovesInOneStepWhereThereIsNone)
{
    put(oldFile(u"Models/nb.bin"_qs), "weights");
    put(oldFile(u"statistics.json"_qs), "counts");
    run();
    EXPECT_EQ(everythingIn(data.path()),
              QStringList({u"Tulvane"_qs, u"Tulvane/Models"_qs, u"Tulvane/Models/nb.bin"_qs,
                           u"Tulvane/statistics.json"_qs}));
    EXPECT_EQ(contentOf(newFile(u"Models/nb.bin"_qs)), "weights");
    EXPECT_THAT(infos(), ElementsAre(u"Moved "_qs + data.file(u"Arven Scribe"_qs) + u" → "_qs +
                                     data.file(u"Tulvane"_qs)));
    EXPECT_TRUE(isDone());
}

TEST_F(MigrationTest, FoldersThatAreBothThereAreMergedAndTheNewOnesFilesWin)
{
    put(oldFile(u"Models/both.bin"_qs), "old");
    put(oldFile(u"Models/mine.bin"_qs), "old");
    put(oldFile(u"statistics.json"_qs), "old");
    put(newFile(u"Models/both.bin"_qs), "new");
    run();
    EXPECT_EQ(everythingIn(data.path()),
              QStringList({u"Tulvane"_qs, u"Tulvane/Models"_qs, u"Tulvane/Models/both.bin"_qs,
                           u"Tulvane/Models/mine.bin"_qs, u"Tulvane/statistics.json"_qs}));
    EXPECT_EQ(contentOf(newFile(u"Models/both.bin"_qs)), "new");
    EXPECT_EQ(contentOf(newFile(u"statistics.json"_qs)), "old");
    EXPECT_THAT(infos(), ElementsAre(u"Merged "_qs + data.file(u"Arven Scribe"_qs) + u" into "_qs +
                                     data.file(u"Tulvane"_qs)));
}

TEST_F(MigrationTest, AFileSystemErrorIsLoggedAndItIsDoneAllTheSame)
{
    put(oldFile(u"a"_qs), "old");
    put(data.file(u"Tulvane"_qs), "a file in the folder's place");
    run();
    ASSERT_EQ(errors().size(), 1);
    EXPECT_TRUE(errors()[0].startsWith(u"Could not migrate Application Support folder: "_qs +
                                       oldFile(u"a"_qs) + u": "_qs))
        << qPrintable(errors()[0]);
    EXPECT_THAT(infos(), IsEmpty());
    EXPECT_EQ(contentOf(oldFile(u"a"_qs)), "old");
    EXPECT_TRUE(isDone());
}

TEST_F(MigrationTest, AFileOfTheOldFoldersNameIsNoneOfOurs)
{
    put(data.file(u"Arven Scribe"_qs));
    run();
    EXPECT_EQ(everythingIn(data.path()), QStringList(u"Arven Scribe"_qs));
    EXPECT_THAT(errors(), IsEmpty());
}

TEST_F(MigrationTest, PreferencesThatCannotBeReadDoNotKeepTheFolderBack)
{
    defaults.failDomain(Migration::oldDomain,
                        DefaultsError::unreadable(u"/x/com.dunio.Arvenscribe.json"_qs, u"denied"_qs));
    put(oldFile(u"a"_qs));
    run();
    ASSERT_EQ(errors().size(), 1);
    EXPECT_TRUE(errors()[0].startsWith(u"Could not read the preferences of com.dunio.Arvenscribe: "_qs));
    EXPECT_TRUE(QFile::exists(newFile(u"a"_qs)));
    EXPECT_TRUE(isDone());
}

TEST_F(MigrationTest, OnlyWhatCouldBeStoredIsCounted)
{
    store->insert(Migration::oldDomain, {{u"playSounds"_qs, false}});
    defaults.failWrites(DefaultsError::notWritten(u"/x"_qs, u"full"_qs));
    run();
    EXPECT_THAT(infos(), ElementsAre(u"Migrated 0 preference(s) from com.dunio.Arvenscribe"_qs));
}

TEST_F(MigrationTest, WithoutAFolderForDataNothingIsTouched)
{
    Migration(defaults, {}).run();
    EXPECT_THAT(errors(), IsEmpty());
    EXPECT_TRUE(isDone());
}

} // namespace tulvane::test
