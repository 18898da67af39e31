#include "ControllerFixture.h"

#include <gmock/gmock.h>

namespace tulvane {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

constexpr int hour = 3600;

/// The state in which the wall clock jumps, and by how many seconds.
struct Jump {
    QString phase;
    int seconds = 0;
};

void PrintTo(const Jump& jump, std::ostream* out)
{
    *out << jump.phase.toStdString() << ' ' << jump.seconds;
}

// The wall clock is set while a dictation is under way, as by daylight saving, a network or the user.
class WallClock : public test::ControllerFixture, public testing::WithParamInterface<Jump> {
protected:
    void jumpIn(const QString& state)
    {
        if (state == GetParam().phase)
            clock.setNow(clock.now().addSecs(GetParam().seconds));
    }

    /// A dictation of two seconds, its clock jumping on its way.
    void dictate()
    {
        jumpIn(QStringLiteral("idle"));
        press();
        jumpIn(QStringLiteral("recording"));
        speak(32000);
        advance(2s);
        press();
        ASSERT_EQ(phase(), u"transcribing");
        jumpIn(QStringLiteral("transcribing"));
        while (engine.waiting() > 0) {
            engine.step();
            settle();
        }
        ASSERT_EQ(phase(), u"inserting");
        jumpIn(QStringLiteral("inserting"));
        advance(3s);
    }
};

TEST_P(WallClock, ChangesNothingOfADictationButItsDate)
{
    engine.isPrompt = false;
    dictate();
    EXPECT_THAT(phases, ElementsAre(QStringLiteral("recording"), QStringLiteral("transcribing"),
                                    QStringLiteral("inserting"), QStringLiteral("idle")));
    EXPECT_EQ(keys.pastes(), 1);
    ASSERT_EQ(session->history().size(), 1);
    EXPECT_EQ(session->history().first().durationSeconds, 2);
    ASSERT_EQ(stats.days().size(), 1);
    EXPECT_EQ(stats.days().first().dictations, 1);
    EXPECT_EQ(stats.days().first().speechSeconds, 2);
}

TEST_P(WallClock, LeavesTheHistoryInTheOrderOfWhatWasSaid)
{
    engine.isPrompt = false;
    for (const char* const text : {" først", " så", " sist"}) {
        engine.text = QString::fromUtf8(text);
        dictate();
    }
    QStringList texts;
    for (const TranscriptEntry& entry : session->history())
        texts.append(entry.text);
    EXPECT_THAT(texts, ElementsAre(QStringLiteral("Sist "), QStringLiteral("Så "), QStringLiteral("Først ")));
}

TEST_P(WallClock, EndsNoRecordingBeforeItsTimeAndNoneAfterIt)
{
    settings.maxRecordingSeconds.set(60);
    press();
    speak(32000);
    clock.setNow(clock.now().addSecs(GetParam().seconds));
    advance(59s);
    EXPECT_EQ(phase(), u"recording");
    advance(1s);
    EXPECT_NE(phase(), u"recording");
}

TEST_P(WallClock, ANoticeGoesInItsTime)
{
    press();
    press();
    ASSERT_EQ(phase().left(7), u"notice:");
    clock.setNow(clock.now().addSecs(GetParam().seconds));
    advance(DictationController::noticeTime - 1ms);
    EXPECT_EQ(phase().left(7), u"notice:");
    advance(1ms);
    EXPECT_EQ(phase(), u"idle");
}

QList<Jump> everyJump()
{
    QList<Jump> all;
    for (const char* const phase : {"idle", "recording", "transcribing", "inserting"})
        for (const int seconds : {hour, -hour})
            all.append({QString::fromLatin1(phase), seconds});
    return all;
}

INSTANTIATE_TEST_SUITE_P(InEveryState, WallClock, testing::ValuesIn(everyJump()));

// Midnight is passed twice, or jumped back over.
class TurnOfTheDay : public test::ControllerFixture {};

TEST_F(TurnOfTheDay, ADayThatBeginsTwiceIsOneDay)
{
    clock.setNow(QDateTime(QDate(2026, 11, 20), QTime(23, 59)));
    for (const int seconds : {0, hour, -hour, hour}) {
        clock.setNow(clock.now().addSecs(seconds));
        press();
        speak(32000);
        press();
        advance(3s);
    }
    QList<std::pair<QDate, qint64>> days;
    for (const DailyStat& day : stats.days())
        days.append({day.date.date(), day.dictations});
    EXPECT_THAT(days, ElementsAre(std::pair(QDate(2026, 11, 20), qint64{2}),
                                  std::pair(QDate(2026, 11, 21), qint64{2})));
}

} // namespace
} // namespace tulvane
