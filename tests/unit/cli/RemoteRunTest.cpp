#include "CommandRun.h"

#include <app/cli/RemoteRun.h>
#include <platform/fake/FakeRemoteControl.h>

#include <gtest/gtest.h>

namespace tulvane::cli {
namespace {

using test::CommandRun;

TEST(RemoteRun, TheCommandRunsThereAndItsWordsAndOutputGoWhole)
{
    const auto desktop = std::make_shared<FakeRemoteDesktop>();
    QStringList there;
    desktop->running = [&there](RemoteRequest request, const QString& words) {
        EXPECT_EQ(request, RemoteRequest::settings);
        return answerOf(words, [&there](const QStringList& arguments, Console& console) {
            there = arguments;
            console.out << "på «plass»\n";
            console.err << "nei\n";
            return 2;
        });
    };
    FakeRemoteControl remote(desktop);
    const QStringList words{QStringLiteral("set"), QStringLiteral("vocabularyPrompt"),
                            QStringLiteral("Åse, \"B\"")};
    const CommandRun here = CommandRun::of([&](Console& console) {
        return runThere(words, RemoteRequest::settings, remote, console).value_or(-1);
    });
    EXPECT_EQ(there, words);
    EXPECT_EQ(here.status, 2);
    EXPECT_EQ(here.out, QStringLiteral("på «plass»\n"));
    EXPECT_EQ(here.err, QStringLiteral("nei\n"));
}

TEST(RemoteRun, WithoutAProgramThatUnderstandsNothingHasHappened)
{
    const auto desktop = std::make_shared<FakeRemoteDesktop>();
    FakeRemoteControl remote(desktop);
    const auto run = [&] {
        return CommandRun::of([&](Console& console) {
            return runThere({QStringLiteral("list")}, RemoteRequest::settings, remote, console).value_or(-1);
        });
    };
    EXPECT_EQ(run().status, -1);
    desktop->running = [](RemoteRequest, const QString&) { return QJsonObject(); };
    EXPECT_EQ(run().status, -1);
    desktop->isReachable = false;
    EXPECT_EQ(run().status, -1);
    EXPECT_EQ(run().out + run().err, QString());
}

} // namespace
} // namespace tulvane::cli
