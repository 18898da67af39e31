#include <dictation/ModelFigures.h>
#include <support/Await.h>
#include <support/LogCapture.h>
#include <support/ScratchFolder.h>

#include <QFile>

#include <gtest/gtest.h>

#include <memory>

namespace tulvane::test {

namespace {

using namespace std::chrono_literals;

const QDateTime noon(QDate(2026, 11, 20), QTime(12, 0), Qt::UTC);
const QString medium = QStringLiteral("/models/medium.bin");
const QString small = QStringLiteral("/models/small.bin");

class ModelFiguresTest : public testing::Test {
protected:
    ScratchFolder folder;
    QString file = folder.file(QStringLiteral("cache/figures.json"));
    qint64 resident = 100;
    std::unique_ptr<ModelFigures> owner = std::make_unique<ModelFigures>(file, [this] { return resident; });
    ModelFigures& figures = *owner;

    void load(const QString& model, const QString& previous, qint64 then)
    {
        figures.noteLoading(previous);
        resident = then;
        figures.noteLoaded(model, noon);
    }
};

TEST_F(ModelFiguresTest, AModelsMemoryIsWhatTheProcessHasMoreThanWithoutIt)
{
    EXPECT_EQ(figures.of(medium), std::nullopt);
    load(medium, {}, 700);
    EXPECT_EQ(figures.of(medium)->bytes, 600);
    // The earlier one goes when the next one comes.
    load(small, medium, 250);
    EXPECT_EQ(figures.of(small)->bytes, 150);
    EXPECT_EQ(figures.of(medium)->bytes, 600);
}

TEST_F(ModelFiguresTest, WhereTheSystemDoesNotSayThereIsNoMemory)
{
    resident = 0;
    load(medium, {}, 0);
    EXPECT_EQ(figures.of(medium)->bytes, 0);
}

TEST_F(ModelFiguresTest, WhatCannotBeKeptIsLoggedAndWhatIsKeptIsNot)
{
    const LogCapture log;
    load(medium, {}, 700);
    owner.reset();
    EXPECT_TRUE(log.texts("app", QtWarningMsg).isEmpty());
    // A folder cannot stand in the place of a file.
    ModelFigures(folder.file(QStringLiteral("cache/figures.json/figures.json")), [] {
        return qint64{0};
    }).noteLoaded(medium, noon);
    EXPECT_EQ(log.texts("app", QtWarningMsg).size(), 1);
}

TEST_F(ModelFiguresTest, WhereTheSystemNoLongerSaysThereIsNoMemory)
{
    load(medium, {}, 700);
    resident = 0;
    load(small, medium, 0);
    EXPECT_EQ(figures.of(small)->bytes, 0);
}

TEST_F(ModelFiguresTest, AModelThatTookNoMoreThanWasThereTookNothing)
{
    load(medium, {}, 50);
    EXPECT_EQ(figures.of(medium)->bytes, 0);
}

TEST_F(ModelFiguresTest, EachMeasurementIsToldWithItsMoment)
{
    int told = 0;
    QObject::connect(&figures, &ModelFigures::changed, &figures, [&told] { ++told; });
    load(medium, {}, 700);
    EXPECT_EQ(told, 1);
    EXPECT_EQ(figures.of(medium)->when, noon);
    figures.noteDictation(medium, 10, 500ms, noon.addDays(1));
    EXPECT_EQ(told, 2);
    EXPECT_EQ(figures.of(medium)->when, noon.addDays(1));
    EXPECT_DOUBLE_EQ(figures.of(medium)->speed, 20) << "however fast the machine is";
}

TEST_F(ModelFiguresTest, TheSpeedIsThatOfTheLastDictationOfSomeLength)
{
    figures.noteDictation(medium, 10, 4s, noon);
    EXPECT_DOUBLE_EQ(figures.of(medium)->speed, 2.5);
    figures.noteDictation(medium, 1, 4s, noon);
    EXPECT_DOUBLE_EQ(figures.of(medium)->speed, 2.5);
    figures.noteDictation(medium, 10, 5s, noon.addDays(1));
    EXPECT_DOUBLE_EQ(figures.of(medium)->speed, 2);
    EXPECT_EQ(figures.of(medium)->when, noon.addDays(1));
    figures.noteDictation({}, 10, 5s, noon);
    figures.noteDictation(small, 10, 0s, noon);
    EXPECT_EQ(figures.of(small), std::nullopt);
}

TEST_F(ModelFiguresTest, TheNextRunOfTheProgramHasThem)
{
    load(medium, {}, 700);
    figures.noteDictation(medium, 10, 4s, noon);
    const auto noted = figures.of(medium);
    owner.reset();
    const ModelFigures later(file, [] { return qint64{0}; });
    ASSERT_TRUE(noted);
    EXPECT_EQ(later.of(medium), noted);
}

TEST_F(ModelFiguresTest, NeitherALoadNorADictationWaitsForTheDisk)
{
    load(medium, {}, 700);
    figures.noteDictation(medium, 10, 4s, noon);
    EXPECT_FALSE(QFile::exists(file));
    EXPECT_TRUE(waitUntil([this] { return QFile::exists(file); }));
}

TEST_F(ModelFiguresTest, ADamagedFileIsNoFigures)
{
    load(medium, {}, 700);
    owner.reset();
    QFile damaged(file);
    ASSERT_TRUE(damaged.open(QIODevice::WriteOnly));
    damaged.write("{\"medium\": [1, {\"bytes\": -4");
    damaged.close();
    const ModelFigures later(file, [] { return qint64{0}; });
    EXPECT_EQ(later.of(medium), std::nullopt);
}

} // namespace

} // namespace tulvane::test
