#include "CommandRun.h"

#include <app/cli/RemoteCommand.h>
#include <platform/fake/FakeRemoteControl.h>

#include <QJsonDocument>

#include <gtest/gtest.h>

namespace tulvane::cli {
namespace {

using test::CommandRun;

/// A running program that does what the words say, but for a start that `error` forbids.
class RemoteCommandTest : public ::testing::Test {
protected:
    RemoteCommandTest()
    {
        m_desktop->running = [this](RemoteRequest request, const QString&) { return answer(request); };
    }

    CommandRun run(const char* name, const QStringList& arguments = {})
    {
        FakeRemoteControl remote(m_desktop);
        return CommandRun::of([&](Console& console) {
            return runRemote(QString::fromLatin1(name), arguments, remote, console);
        });
    }

    QString phase = QStringLiteral("idle");
    QString message;
    QString error;
    bool isLoading = false;
    bool isLocked = false;
    QList<RemoteRequest> asked;
    std::shared_ptr<FakeRemoteDesktop> m_desktop = std::make_shared<FakeRemoteDesktop>();

private:
    QJsonObject answer(RemoteRequest request)
    {
        if (request != RemoteRequest::status)
            asked.append(request);
        const bool isRecording = phase == u"recording";
        const bool begins = request == RemoteRequest::start || request == RemoteRequest::toggle;
        if (begins && !isRecording && phase != u"transcribing" && !isLocked) {
            phase = error.isEmpty() ? QStringLiteral("recording") : QStringLiteral("error");
            message = error;
        } else if (isRecording && (request == RemoteRequest::stop || request == RemoteRequest::toggle)) {
            phase = QStringLiteral("transcribing");
        } else if (isRecording && request == RemoteRequest::cancel) {
            phase = QStringLiteral("idle");
        }
        return {{QStringLiteral("phase"), phase},
                {QStringLiteral("message"), message},
                {QStringLiteral("modelLoading"), isLoading},
                {QStringLiteral("locked"), isLocked},
                {QStringLiteral("hotkey"), QStringLiteral("Alt+Space")},
                {QStringLiteral("historyCount"), 3}};
    }
};

TEST_F(RemoteCommandTest, EachWordIsOneRequest)
{
    EXPECT_EQ(run("start").status, ExitStatus::done);
    EXPECT_EQ(run("stop").status, ExitStatus::done);
    phase = QStringLiteral("idle");
    EXPECT_EQ(run("toggle").status, ExitStatus::done);
    EXPECT_EQ(run("cancel").status, ExitStatus::done);
    EXPECT_EQ(asked, (QList{RemoteRequest::start, RemoteRequest::stop, RemoteRequest::toggle,
                            RemoteRequest::cancel}));
}

TEST_F(RemoteCommandTest, WhatWorksSaysNothing)
{
    const CommandRun begun = run("toggle");
    EXPECT_EQ(begun.out, QString());
    EXPECT_EQ(begun.err, QString());
    const CommandRun ended = run("toggle");
    EXPECT_EQ(ended.status, ExitStatus::done);
    EXPECT_EQ(ended.err, QString());
}

TEST_F(RemoteCommandTest, AStartThatFailsGivesTheErrorsOwnWords)
{
    error = QStringLiteral("No microphone is available.");
    for (const char* word : {"start", "toggle"}) {
        phase = QStringLiteral("idle");
        const CommandRun failed = run(word);
        EXPECT_EQ(failed.status, ExitStatus::failed);
        EXPECT_EQ(failed.err, QStringLiteral("tulvane: No microphone is available.\n"));
    }
}

TEST_F(RemoteCommandTest, WhatHasNoEffectSaysSo)
{
    for (const char* word : {"stop", "cancel"}) {
        const CommandRun idle = run(word);
        EXPECT_EQ(idle.status, ExitStatus::failed);
        EXPECT_EQ(idle.err, QStringLiteral("tulvane: Nothing is being recorded.\n"));
    }
    phase = QStringLiteral("transcribing");
    for (const char* word : {"start", "toggle"}) {
        const CommandRun busy = run(word);
        EXPECT_EQ(busy.status, ExitStatus::failed);
        EXPECT_EQ(busy.err, QStringLiteral("tulvane: The dictation before is still being finished.\n"));
    }
}

TEST_F(RemoteCommandTest, AStartOnALockedScreenSaysSo)
{
    isLocked = true;
    for (const char* word : {"start", "toggle"}) {
        const CommandRun refused = run(word);
        EXPECT_EQ(refused.status, ExitStatus::failed);
        EXPECT_EQ(refused.err,
                  QStringLiteral("tulvane: The screen is locked: nothing is recorded until it is "
                                 "unlocked.\n"));
    }
    EXPECT_EQ(run("status").out,
              QStringLiteral("idle; the screen is locked; hotkey: Alt+Space; 3 in the history\n"));
    // What was being recorded when the lock came has been ended by it.
    phase = QStringLiteral("recording");
    EXPECT_EQ(run("toggle").status, ExitStatus::done);
}

TEST_F(RemoteCommandTest, QuitReturnsOnceTheProgramIsGone)
{
    int questions = 0;
    m_desktop->running = [&](RemoteRequest request, const QString&) {
        if (request == RemoteRequest::quit)
            asked.append(request);
        // It says nothing more while it ends.
        if (!asked.isEmpty() && ++questions == 3)
            m_desktop->isReachable = false;
        return asked.isEmpty() ? QJsonObject{{QStringLiteral("phase"), QStringLiteral("idle")}}
                               : QJsonObject();
    };
    const CommandRun ended = run("quit");
    EXPECT_EQ(ended.status, ExitStatus::done);
    EXPECT_EQ(ended.out + ended.err, QString());
    EXPECT_EQ(asked, QList{RemoteRequest::quit});
    EXPECT_EQ(run("quit").status, ExitStatus::notRunning);
}

TEST_F(RemoteCommandTest, AProgramThatDoesNotEndIsToldAfterFiveSeconds)
{
    const CommandRun stuck = run("quit");
    EXPECT_EQ(stuck.status, ExitStatus::failed);
    EXPECT_EQ(stuck.err, QStringLiteral("tulvane: The running program does not end.\n"));
}

TEST_F(RemoteCommandTest, StatusIsOneLineOrOneObject)
{
    EXPECT_EQ(run("status").out, QStringLiteral("idle; hotkey: Alt+Space; 3 in the history\n"));
    phase = QStringLiteral("notice");
    message = QStringLiteral("Too short");
    isLoading = true;
    EXPECT_EQ(run("status").out, QStringLiteral("notice: Too short; loading the model; hotkey: Alt+Space; "
                                                "3 in the history\n"));
    const QJsonObject json =
        QJsonDocument::fromJson(run("status", {QStringLiteral("--json")}).out.toUtf8()).object();
    EXPECT_EQ(json.keys(), (QStringList{QStringLiteral("historyCount"), QStringLiteral("hotkey"),
                                        QStringLiteral("locked"), QStringLiteral("message"),
                                        QStringLiteral("modelLoading"), QStringLiteral("phase")}));
    EXPECT_EQ(asked, QList<RemoteRequest>());
}

TEST_F(RemoteCommandTest, JsonGivesTheStateAfterTheRequest)
{
    const CommandRun begun = run("start", {QStringLiteral("--json")});
    EXPECT_EQ(QJsonDocument::fromJson(begun.out.toUtf8())[QStringLiteral("phase")],
              QStringLiteral("recording"));
}

TEST_F(RemoteCommandTest, WithoutARunningProgramTheStatusIsThree)
{
    m_desktop->running = nullptr;
    const CommandRun alone = run("toggle");
    EXPECT_EQ(alone.status, ExitStatus::notRunning);
    EXPECT_EQ(alone.err,
              QStringLiteral("tulvane: Tulvane is not running. (tulvane --background starts it)\n"));
    m_desktop->isReachable = false;
    const CommandRun lonely = run("status");
    EXPECT_EQ(lonely.status, ExitStatus::notRunning);
    EXPECT_EQ(lonely.err,
              QStringLiteral("tulvane: There is no session bus to reach the running program by.\n"));
}

TEST_F(RemoteCommandTest, AWrongWordAsksNothing)
{
    EXPECT_EQ(run("stop", {QStringLiteral("now")}).status, ExitStatus::wrongUsage);
    EXPECT_EQ(asked, QList<RemoteRequest>());
}

} // namespace
} // namespace tulvane::cli
