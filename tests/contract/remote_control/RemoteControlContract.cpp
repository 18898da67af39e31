#include "RemoteControlBackend.h"

#include <support/Await.h>

namespace tulvane::test {

namespace {

using Claim = RemoteControl::Claim;

const RemoteControl::Answer echo = [](RemoteRequest request, const QString& argument) {
    return QJsonObject{{QStringLiteral("request"), static_cast<int>(request)},
                       {QStringLiteral("argument"), argument}};
};

} // namespace

TEST_P(RemoteControlContract, NobodyAnswersWhileNoProgramRuns)
{
    const auto backend = GetParam().make();
    const auto answer = await(backend->process()->ask(RemoteRequest::status));
    ASSERT_FALSE(answer);
    EXPECT_EQ(answer.error(), RemoteError::notRunning);
}

TEST_P(RemoteControlContract, EveryRequestReachesTheRunningProgramAndItsAnswerComesBack)
{
    const auto backend = GetParam().make();
    const auto program = backend->process();
    ASSERT_EQ(program->claim(echo), Claim::granted);
    const auto caller = backend->process();
    for (const RemoteRequest request :
         {RemoteRequest::start, RemoteRequest::stop, RemoteRequest::toggle, RemoteRequest::cancel,
          RemoteRequest::status, RemoteRequest::doctor, RemoteRequest::quit}) {
        const auto answer = await(caller->ask(request));
        ASSERT_TRUE(answer);
        EXPECT_EQ(*answer, echo(request, {}));
    }
    for (const RemoteRequest request : {RemoteRequest::activate, RemoteRequest::settings}) {
        const auto answer = await(caller->ask(request, QStringLiteral("Åpne «hjem»")));
        ASSERT_TRUE(answer);
        EXPECT_EQ(*answer, echo(request, QStringLiteral("Åpne «hjem»")));
    }
}

TEST_P(RemoteControlContract, OnlyOneIsTheRunningProgramUntilItIsGone)
{
    const auto backend = GetParam().make();
    auto first = backend->process();
    const auto second = backend->process();
    ASSERT_EQ(first->claim(echo), Claim::granted);
    EXPECT_EQ(second->claim(echo), Claim::taken);
    // Who was refused can still ask the other, as a second start does.
    EXPECT_TRUE(await(second->ask(RemoteRequest::activate)));

    first.reset();
    const auto answer = await(second->ask(RemoteRequest::status));
    ASSERT_FALSE(answer);
    EXPECT_EQ(answer.error(), RemoteError::notRunning);
    EXPECT_EQ(second->claim(echo), Claim::granted);
}

TEST_P(RemoteControlContract, AnnouncingIsAllowedAtAnyTime)
{
    const auto backend = GetParam().make();
    const auto program = backend->process();
    program->announcePhase(QStringLiteral("idle"));
    ASSERT_EQ(program->claim(echo), Claim::granted);
    program->announcePhase(QStringLiteral("recording"));
    EXPECT_TRUE(await(backend->process()->ask(RemoteRequest::status)));
}

TEST_P(RemoteControlContract, WithoutAWayToAskItSaysSo)
{
    const auto backend = GetParam().make();
    const auto process = backend->lonelyProcess();
    EXPECT_EQ(process->claim(echo), Claim::impossible);
    process->announcePhase(QStringLiteral("idle"));
    const auto answer = await(process->ask(RemoteRequest::status));
    ASSERT_FALSE(answer);
    EXPECT_EQ(answer.error(), RemoteError::noConnection);
}

} // namespace tulvane::test
