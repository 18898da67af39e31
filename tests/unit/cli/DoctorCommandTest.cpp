#include "CommandRun.h"

#include <app/cli/DoctorCommand.h>
#include <app/program/HotkeyDiagnostics.h>
#include <platform/fake/FakeRemoteControl.h>

#include <QJsonArray>
#include <QJsonDocument>

#include <gtest/gtest.h>

namespace tulvane::cli {
namespace {

using test::CommandRun;

class DoctorCommandTest : public ::testing::Test {
protected:
    CommandRun run(const QStringList& arguments = {})
    {
        FakeRemoteControl remote(desktop);
        const DoctorContext context{.remote = remote, .examine = [this] { return here; }};
        return CommandRun::of([&](Console& console) { return runDoctor(arguments, context, console); });
    }
    void programRunsWith(const Diagnostics& hotkeys)
    {
        desktop->running = [hotkeys](RemoteRequest request, const QString&) {
            EXPECT_EQ(request, RemoteRequest::doctor);
            QJsonArray lines;
            for (const Diagnostic& diagnostic : hotkeys)
                lines.append(diagnostic.toJson());
            return QJsonObject{{QStringLiteral("diagnostics"), lines}};
        };
    }

    Examination here{.session = {Diagnostic::good(QStringLiteral("session"), QStringLiteral("X11"))},
                     .dictation = {Diagnostic::good(QStringLiteral("model"), QStringLiteral("small"))}};
    std::shared_ptr<FakeRemoteDesktop> desktop = std::make_shared<FakeRemoteDesktop>();
};

TEST_F(DoctorCommandTest, WhenAllWorksEveryLineSaysWhatThereIs)
{
    programRunsWith(
        {Diagnostic::good(QStringLiteral("key combination"), QStringLiteral("Alt+Space is registered"))});
    const CommandRun healthy = run();
    EXPECT_EQ(healthy.status, ExitStatus::done);
    EXPECT_EQ(healthy.out, QStringLiteral("  ok  program          is running\n"
                                          "  ok  session          X11\n"
                                          "  ok  key combination  Alt+Space is registered\n"
                                          "  ok  model            small\n"
                                          "\nReady to dictate.\n"));
    EXPECT_EQ(healthy.err, QString());
}

TEST_F(DoctorCommandTest, WhatDoesNotWorkSaysWhyAndWhatToDo)
{
    programRunsWith({});
    here.dictation.append(
        Diagnostic::bad(QStringLiteral("display"), QStringLiteral("Gone."), QStringLiteral("Bring it.")));
    const CommandRun ill = run();
    EXPECT_EQ(ill.status, ExitStatus::failed);
    EXPECT_TRUE(ill.out.endsWith(
        QStringLiteral("  no  display  Gone.\n               Bring it.\n\nNext: Bring it.\n")))
        << qPrintable(ill.out);
}

TEST_F(DoctorCommandTest, WithoutTheProgramTheHotkeysAreNotRegistered)
{
    const CommandRun alone = run({QStringLiteral("--json")});
    EXPECT_EQ(alone.status, ExitStatus::failed);
    const QJsonArray lines = QJsonDocument::fromJson(alone.out.toUtf8()).array();
    ASSERT_EQ(lines.size(), 5);
    EXPECT_EQ(lines[0].toObject(),
              Diagnostic::bad(QStringLiteral("program"), QStringLiteral("is not running."),
                              QStringLiteral("Start it: tulvane --background"))
                  .toJson());
    EXPECT_EQ(Diagnostic::fromJson(lines[2].toObject()), hotkeyDiagnosticsWithoutProgram()[0]);
    EXPECT_EQ(Diagnostic::fromJson(lines[3].toObject()), hotkeyDiagnosticsWithoutProgram()[1]);
}

TEST_F(DoctorCommandTest, WithoutABusThatIsTheRemedy)
{
    desktop->isReachable = false;
    EXPECT_TRUE(run().out.contains(QStringLiteral("Start your session with D-Bus (dbus-run-session).")));
}

} // namespace
} // namespace tulvane::cli
