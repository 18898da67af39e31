#include "ControllerFixture.h"

#include <gmock/gmock.h>

namespace tulvane {
namespace {

using namespace std::chrono_literals;
using testing::IsEmpty;

// What ends or begins a dictation at an unusual moment.
class ControllerEdges : public test::ControllerFixture {
protected:
    void finishEngine()
    {
        while (engine.waiting() > 0) {
            engine.step();
            settle();
        }
    }
};

TEST_F(ControllerEdges, TheLostMicrophonesNoticeStaysForItsTime)
{
    press();
    input.changeConfiguration();
    settle();
    advance(1599ms);
    EXPECT_EQ(phase(), u"notice: Microphone changed – recording cancelled");
    advance(1ms);
    EXPECT_EQ(phase(), u"idle");
}

TEST_F(ControllerEdges, AMicrophoneThatFallsSilentEndsTheRecordingLikeAPress)
{
    press();
    speak();
    input.stall();
    settle();
    EXPECT_EQ(phase(), u"inserting");
    EXPECT_FALSE(hotkeys.machine.isRecording);
    advance(3s);
    EXPECT_EQ(session->history().size(), 1);
}

TEST_F(ControllerEdges, AfterItsEndNothingOfItIsCalledAnyMore)
{
    controller.reset();
    EXPECT_FALSE(hotkeys.onStart);
    EXPECT_FALSE(hotkeys.onStop);
    EXPECT_FALSE(hotkeys.onCancel);
    EXPECT_FALSE(session->onMaxDurationReached);
    EXPECT_FALSE(session->onRecordingInterrupted);
    EXPECT_FALSE(session->onInputStalled);
}

TEST_F(ControllerEdges, AStartOrACancelWhileADictationIsFinishedDoesNothing)
{
    engine.isPrompt = false;
    dictateByHotkey();
    ASSERT_EQ(phase(), u"transcribing");
    controller->start();
    controller->cancel();
    controller->cancel(QStringLiteral("Given up"));
    EXPECT_EQ(phase(), u"transcribing");
    EXPECT_EQ(input.enginesMade(), 1);
    finishEngine();
    ASSERT_EQ(phase(), u"inserting");
    controller->start();
    controller->cancel();
    EXPECT_EQ(phase(), u"inserting");
    advance(3s);
    EXPECT_EQ(phase(), u"idle");
    EXPECT_EQ(keys.pastes(), 1);
    EXPECT_EQ(sounds.played.count(QStringLiteral("Pop")), 1);
}

TEST_F(ControllerEdges, TheClipboardIsPutBackAsTheSettingSaidAtTheStop)
{
    for (const bool restore : {false, true}) {
        boards.generalBoard.otherProgramWrites(QStringLiteral("mine"));
        settings.restoreClipboard.set(restore);
        engine.isPrompt = false;
        dictateByHotkey();
        settings.restoreClipboard.set(!restore);
        finishEngine();
        advance(3s);
        ASSERT_EQ(phase(), u"idle");
        EXPECT_EQ(boards.generalBoard.text(), restore ? u"mine" : u"Hei på deg");
    }
}

TEST_F(ControllerEdges, TheClipboardIsReadWhileTheEngineWorksAndNotAfterIt)
{
    engine.isPrompt = false;
    dictateByHotkey();
    EXPECT_EQ(phase(), u"transcribing");
    EXPECT_EQ(boards.readsAhead, 1);
    finishEngine();
    advance(3s);
    EXPECT_EQ(boards.readsAhead, 1);
}

TEST_F(ControllerEdges, TheClipboardIsNotReadWhereItIsNotToBePutBack)
{
    settings.restoreClipboard.set(false);
    dictateByHotkey();
    EXPECT_EQ(boards.readsAhead, 0);
}

TEST_F(ControllerEdges, InHoldModeATapEndsARecordingThatTheMenuBeganAndTheTextIsNotLost)
{
    settings.hotkeyMode.set(HotkeyMode::hold);
    controller->start();
    speak();
    press(); // at once: a tap
    EXPECT_EQ(phase(), u"inserting");
    advance(3s);
    EXPECT_EQ(session->history().size(), 1);
    // Its own recording a tap still takes back.
    press();
    EXPECT_EQ(phase(), u"idle");
    EXPECT_EQ(session->history().size(), 1);
    EXPECT_THAT(sounds.played, testing::Contains(QStringLiteral("Tink")).Times(1));
}

TEST_F(ControllerEdges, WhileTheSessionIsLockedNothingStarts)
{
    controller->setLocked(true);
    press();
    controller->start();
    controller->toggle();
    EXPECT_THAT(phases, IsEmpty());
    EXPECT_FALSE(hotkeys.machine.isRecording);
    EXPECT_EQ(input.enginesMade(), 0);
    EXPECT_TRUE(log.contains(QStringLiteral("The screen is locked: nothing is recorded")));
    controller->setLocked(false);
    press();
    EXPECT_EQ(phase(), u"recording");
}

TEST_F(ControllerEdges, ALockEndsTheRecordingAndKeepsItsTextForTheHistory)
{
    press();
    speak();
    controller->setLocked(true);
    settle();
    EXPECT_EQ(phase(), u"idle");
    EXPECT_FALSE(input.isOpen());
    EXPECT_FALSE(hotkeys.machine.isRecording);
    EXPECT_EQ(session->history().size(), 1);
    EXPECT_EQ(keys.pastes(), 0);
    EXPECT_EQ(controller->lastDelivery(), std::nullopt);
}

TEST_F(ControllerEdges, ALockDuringATranscriptionKeepsItsTextOutOfTheLocker)
{
    engine.isPrompt = false;
    dictateByHotkey();
    controller->setLocked(true);
    finishEngine();
    EXPECT_EQ(phase(), u"idle");
    EXPECT_EQ(session->history().size(), 1);
    EXPECT_EQ(keys.pastes(), 0);
}

TEST_F(ControllerEdges, ALockDuringAnInsertionLeavesTheTextOnTheClipboard)
{
    boards.generalBoard.otherProgramWrites(QStringLiteral("mine"));
    boards.generalBoard.holdContents(); // the user's own clipboard is slow to come
    dictateByHotkey();
    ASSERT_EQ(phase(), u"inserting");
    controller->setLocked(true);
    boards.generalBoard.answerContents();
    settle();
    EXPECT_EQ(phase(), u"notice: Copied to clipboard");
    EXPECT_EQ(keys.posted().size(), 0);
    EXPECT_EQ(boards.generalBoard.text(), u"Hei på deg ");
    EXPECT_EQ(session->history().size(), 1);
    controller->setLocked(false);
    advance(3s);
    dictateByHotkey();
    boards.generalBoard.answerContents();
    settle();
    EXPECT_EQ(keys.pastes(), 1);
}

TEST_F(ControllerEdges, TheSpacesAfterAPasteAreNotTypedIntoTheLocker)
{
    settings.appendTrailingSpace.set(true);
    boards.generalBoard.tellReads();
    dictateByHotkey();
    ASSERT_EQ(keys.pastes(), 1);
    controller->setLocked(true);
    boards.generalBoard.frontProgramReads();
    settle();
    advance(3s);
    EXPECT_EQ(keys.spaces(), 0);
    EXPECT_EQ(phase(), u"idle");
}

} // namespace
} // namespace tulvane
