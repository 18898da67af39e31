#include "LifeCycleDesktop.h"

#include <support/Await.h>
#include <support/Speech.h>

#include <QFile>
#include <QJsonDocument>

#include <gtest/gtest.h>

namespace tulvane::test {

namespace {

const QString oldDomain = QStringLiteral("com.dunio.Arvenscribe");
const QString words = QStringLiteral("Migrated 3 preference(s) from com.dunio.Arvenscribe");

/// What the earlier product left: some of it, all of it, nothing.
struct Estate {
    bool preferences;
    bool folder;
    bool ownFolder; ///< the program's own is there already
};

class MigrationForReal : public testing::TestWithParam<Estate> {
protected:
    void leave(const Estate& estate) const
    {
        if (estate.preferences)
            here.writeDomain(oldDomain,
                             R"({"appLanguage": "en", "playSounds": false, "hotkeyMode": "hold"})");
        if (estate.folder) {
            here.writeData(QStringLiteral("Arven Scribe/Models/both.bin"), "old");
            here.writeData(QStringLiteral("Arven Scribe/Models/mine.bin"), "old");
        }
        if (estate.ownFolder)
            here.writeData(QStringLiteral("Tulvane/Models/both.bin"), "new");
    }
    QByteArray model(const char* name) const
    {
        return here.scratch.read(QStringLiteral("data/Tulvane/Models/") + QString::fromLatin1(name));
    }
    QString setting(const char* key) const
    {
        return here.tulvane({QStringLiteral("settings"), QStringLiteral("get"), QString::fromLatin1(key)})
            .trimmed();
    }

    LifeCycleDesktop here;
};

} // namespace

TEST_P(MigrationForReal, BringsOverWhatThereIsOnceAndNeverAgain)
{
    const Estate estate = GetParam();
    leave(estate);
    here.launch();
    // Its words are those of the language that was set before.
    ASSERT_TRUE(here.waitForWindow(QStringLiteral("Sett opp Tulvane")));
    EXPECT_EQ(setting("hotkeyMode"), QStringLiteral("toggle")); // of this start
    const QString log = here.log();
    EXPECT_EQ(log.contains(words), estate.preferences) << qPrintable(log);
    EXPECT_EQ(log.contains(QStringLiteral("Moved ") + here.data(QStringLiteral("Arven Scribe")) +
                           QStringLiteral(" → ") + here.data(QStringLiteral("Tulvane"))),
              estate.folder && !estate.ownFolder)
        << qPrintable(log);
    EXPECT_EQ(log.contains(QStringLiteral("Merged ")), estate.folder && estate.ownFolder) << qPrintable(log);
    EXPECT_EQ(here.preferences()[QStringLiteral("didMigrateFromArvenscribe")].toBool(), true);
    EXPECT_EQ(model("mine.bin"), estate.folder ? "old" : "");
    EXPECT_EQ(model("both.bin"), estate.ownFolder ? "new" : estate.folder ? "old" : "");
    EXPECT_FALSE(QFile::exists(here.data(QStringLiteral("Arven Scribe"))));

    here.quit();
    here.writeDomain(oldDomain, R"({"hotkeyMode": "hybrid", "maxRecordingSeconds": 77})");
    here.writeData(QStringLiteral("Arven Scribe/Models/late.bin"), "late");
    here.launch();
    EXPECT_EQ(setting("hotkeyMode"), estate.preferences ? QStringLiteral("hold") : QStringLiteral("toggle"));
    EXPECT_NE(setting("maxRecordingSeconds"), QStringLiteral("77"));
    EXPECT_EQ(setting("appLanguage"), estate.preferences ? QStringLiteral("en") : QStringLiteral("nb"));
    EXPECT_TRUE(here.waitForWindow(estate.preferences ? QStringLiteral("Set up Tulvane")
                                                      : QStringLiteral("Sett opp Tulvane")));
    EXPECT_TRUE(QFile::exists(here.data(QStringLiteral("Arven Scribe/Models/late.bin"))));
    EXPECT_EQ(model("late.bin"), "");
    EXPECT_FALSE(here.log().contains(QStringLiteral("Migrated ")));
}

INSTANTIATE_TEST_SUITE_P(Estates, MigrationForReal,
                         testing::Values(Estate{false, false, false}, Estate{true, false, false},
                                         Estate{false, true, false}, Estate{false, true, true},
                                         Estate{true, true, false}, Estate{true, true, true},
                                         Estate{true, false, true}));

// A command may be the first thing of the program that runs.
class MigrationByACommand : public testing::Test {
protected:
    MigrationByACommand()
    {
        here.writeData(QStringLiteral("Arven Scribe/statistics.json"),
                       R"({"days":[{"characters":25000,"date":"2025-03-14T23:00:00Z","dictations":400,)"
                       R"("speechSeconds":2500.5,"words":5000}],"version":1})");
    }
    [[nodiscard]] int words() const
    {
        const QString json = here.tulvane({QStringLiteral("stats"), QStringLiteral("--period"),
                                           QStringLiteral("all"), QStringLiteral("--json")});
        return QJsonDocument::fromJson(json.toUtf8())[QStringLiteral("words")].toInt();
    }
    void expectAllOfIt()
    {
        EXPECT_FALSE(QFile::exists(here.data(QStringLiteral("Arven Scribe"))));
        EXPECT_EQ(words(), 5000);
        here.launch();
        EXPECT_EQ(words(), 5000);
    }

    LifeCycleDesktop here;
};

TEST_F(MigrationByACommand, ADictationAddsToWhatTheEarlierProductCounted)
{
    const auto dictate =
        here.begin({QStringLiteral("dictate"), QStringLiteral("--model"), QStringLiteral("demo"),
                    QStringLiteral("--language"), QStringLiteral("no")});
    QByteArray told;
    ASSERT_TRUE(waitUntil([&] {
        told += dictate->readAllStandardError();
        return told.contains("Listening");
    })) << told.constData();
    const auto player =
        here.sound.play(speakSentence(QStringLiteral("Hei, dette er en test."), QStringLiteral("nb")), 16000);
    ASSERT_TRUE(waitUntil([&] { return player->state() == QProcess::NotRunning; }));
    runEventLoopFor(std::chrono::milliseconds(500));
    dictate->write("\n");
    ASSERT_TRUE(waitUntil([&] { return dictate->state() == QProcess::NotRunning; }));
    EXPECT_EQ(dictate->exitCode(), 0) << dictate->readAllStandardError().constData();
    EXPECT_EQ(words(), 5005);
    here.launch();
    EXPECT_EQ(words(), 5005);
}

TEST_F(MigrationByACommand, AChangedSettingCostsNothing)
{
    EXPECT_EQ(here.tulvane({QStringLiteral("settings"), QStringLiteral("set"), QStringLiteral("playSounds"),
                            QStringLiteral("false")}),
              QString());
    expectAllOfIt();
}

TEST_F(MigrationByACommand, AListOfModelsCostsNothing)
{
    EXPECT_FALSE(here.tulvane({QStringLiteral("models"), QStringLiteral("list")}).isEmpty());
    expectAllOfIt();
}

} // namespace tulvane::test
