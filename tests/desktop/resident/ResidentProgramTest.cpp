#include "ResidentDesktop.h"

#include <support/Await.h>
#include <support/Signals.h>

#include <QFile>
#include <QJsonDocument>

#include <gtest/gtest.h>

#include <csignal>

namespace tulvane::test {
TEST(ResidentProgram, WhatIsSaidBetweenTwoPressesStandsInTheProgramInFront)
{
    ResidentDesktop here;
    here.launch();
    here.openEntry();
    here.pressHotkey();
    ASSERT_TRUE(here.waitForPhase(QStringLiteral("recording")));
    EXPECT_EQ(here.sound.openMicrophones(), 1);
    here.speak(said);
    here.pressHotkey();
    EXPECT_TRUE(here.waitForEntry(heard)) << qPrintable(here.entryText());
    EXPECT_TRUE(here.waitForPhase(QStringLiteral("idle")));
    EXPECT_EQ(here.sound.openMicrophones(), 0);
    EXPECT_EQ(here.status()[QStringLiteral("historyCount")], 1);
    EXPECT_FALSE(here.tulvane(words("status --json")).out.contains(QStringLiteral("test")));
}

TEST(ResidentProgram, TheCommandLineAndTheHotkeyShareOneRecording)
{
    ResidentDesktop here;
    here.launch();
    here.openEntry();
    EXPECT_EQ(here.tulvane(words("start")).status, 0);
    here.speak(said);
    here.pressHotkey(); // ends what the command line began
    EXPECT_TRUE(here.waitForEntry(heard)) << qPrintable(here.entryText());
    ASSERT_TRUE(here.waitForPhase(QStringLiteral("idle")));

    here.pressHotkey();
    ASSERT_TRUE(here.waitForPhase(QStringLiteral("recording")));
    here.speak(said);
    EXPECT_EQ(here.tulvane(words("stop")).status, 0);
    EXPECT_TRUE(here.waitForEntry(heard + heard)) << qPrintable(here.entryText());
    ASSERT_TRUE(here.waitForPhase(QStringLiteral("idle")));
    here.pressHotkey(); // begins, though the last recording was not ended by it
    EXPECT_TRUE(here.waitForPhase(QStringLiteral("recording")));
    EXPECT_EQ(here.tulvane(words("cancel")).status, 0);
    EXPECT_EQ(here.status()[QStringLiteral("historyCount")], 2);
    EXPECT_EQ(here.entryText(), heard + heard);
}

TEST(ResidentProgram, ASecondStartHandsOverToTheFirst)
{
    ResidentDesktop here;
    QProcess& first = here.launch();
    const auto second = here.tulvane(words("--background"));
    EXPECT_EQ(second.status, 0);
    EXPECT_EQ(second.err.trimmed(), QStringLiteral("Tulvane is running already."));
    EXPECT_EQ(first.state(), QProcess::Running);
}

TEST(ResidentProgram, EndsWhenAskedToAndTheNextOneTakesItsPlace)
{
    ResidentDesktop here;
    QProcess& program = here.launch();
    EXPECT_EQ(here.tulvane(words("start")).status, 0);
    program.terminate();
    ASSERT_TRUE(waitUntil([&] { return program.state() == QProcess::NotRunning; }));
    EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(program.exitCode(), 0);
    EXPECT_EQ(here.sound.openMicrophones(), 0);
    EXPECT_EQ(here.tulvane(words("toggle")).status, 3);

    QProcess& killed = here.launch();
    sendSignal(killed, SIGKILL);
    ASSERT_TRUE(waitUntil([&] { return killed.state() == QProcess::NotRunning; }));
    here.launch();
}

TEST(ResidentProgram, EndsWithTheXServer)
{
    ResidentDesktop here;
    QProcess& program = here.launch();
    here.desktop.killServer();
    ASSERT_TRUE(waitUntil([&] { return program.state() == QProcess::NotRunning; }));
    EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
}

TEST(ResidentProgram, DoctorFindsEverythingInOrder)
{
    ResidentDesktop here;
    here.launch();
    const auto doctor = here.tulvane(words("doctor"));
    EXPECT_EQ(doctor.status, 0) << qPrintable(doctor.out);
    for (const char* line :
         {"  ok  program          is running\n", "  ok  session          X11",
          "  ok  sound server     pulseaudio 16",
          "  ok  microphone       Virtual_Microphone (48000 Hz, 2 ch)\n",
          "  ok  key combination  Alt+Space is registered\n", "  ok  insertion        pastes\n",
          "  ok  model            nb-whisper-medium-q5_0\n", "  ok  accelerator      CPU"})
        EXPECT_TRUE(doctor.out.contains(QString::fromUtf8(line))) << line << "\n" << qPrintable(doctor.out);
}

TEST(ResidentProgram, WritesIntoTheFieldWhereTheSettingSaysSo)
{
    ResidentDesktop here;
    here.launch();
    EXPECT_EQ(here.tulvane(words("settings set insertionMethod accessibilityThenPaste")).status, 0);
    EXPECT_TRUE(here.tulvane(words("doctor"))
                    .out.contains(QStringLiteral(
                        "  ok  insertion        writes into the field where that works, else pastes\n")));
    here.openEntry();
    here.pressHotkey();
    ASSERT_TRUE(here.waitForPhase(QStringLiteral("recording")));
    here.speak(said);
    here.pressHotkey();
    EXPECT_TRUE(here.waitForEntry(heard)) << qPrintable(here.entryText());
}

TEST(ResidentProgram, AHotkeyThatTheDesktopHoldsIsToldAndTheCommandLineStillWorks)
{
    ResidentDesktop here("<keybind key=\"A-space\"><action name=\"ShowMenu\"><menu>client-menu</menu>"
                         "</action></keybind>");
    here.launch();
    here.openEntry();
    const auto doctor = here.tulvane(words("doctor"));
    EXPECT_EQ(doctor.status, 1);
    EXPECT_TRUE(doctor.out.contains(QStringLiteral("  no  key combination  Alt+Space does nothing.\n")))
        << qPrintable(doctor.out);
    EXPECT_TRUE(doctor.out.contains(QStringLiteral("Another program already uses this key combination.")));

    EXPECT_EQ(here.tulvane(words("toggle")).status, 0);
    here.speak(said);
    EXPECT_EQ(here.tulvane(words("toggle")).status, 0);
    EXPECT_TRUE(here.waitForEntry(heard)) << qPrintable(here.entryText());
}

TEST(ResidentProgram, ASettingThatIsChangedElsewhereIsLiveAtOnce)
{
    ResidentDesktop here;
    here.launch();
    EXPECT_EQ(here.tulvane(words("settings set modifierHotkey rightControl")).status, 0);
    EXPECT_TRUE(here.status()[QStringLiteral("hotkey")].toString().contains(QStringLiteral("Alt+Space or ")));
    EXPECT_EQ(here.tulvane(words("settings get modifierHotkey")).out, QStringLiteral("rightControl\n"));
    const auto refused = here.tulvane(words("settings set modifierHotkey leftElbow"));
    EXPECT_EQ(refused.status, 2);
    EXPECT_TRUE(refused.err.contains(QStringLiteral("modifierHotkey")));
    here.keys.tap(DeviceKey::rightControl);
    EXPECT_TRUE(here.waitForPhase(QStringLiteral("recording")));
}

TEST(ResidentProgram, WhatIsDictatedBesideItCountsAsWellAsItsOwn)
{
    ResidentDesktop here;
    here.launch();
    here.openEntry();
    const auto dictateHere = [&] {
        here.pressHotkey();
        ASSERT_TRUE(here.waitForPhase(QStringLiteral("recording")));
        here.speak(said);
        here.pressHotkey();
        ASSERT_TRUE(here.waitForPhase(QStringLiteral("idle")));
    };
    const auto counted = [&](const char* figure) {
        const QString json = here.tulvane(words("stats --period all --json")).out;
        return QJsonDocument::fromJson(json.toUtf8())[QLatin1String(figure)].toInt();
    };
    dictateHere();
    const int once = counted("words");
    const auto beside = here.begin({QStringLiteral("dictate")});
    QByteArray told;
    ASSERT_TRUE(waitUntil([&] {
        told += beside->readAllStandardError();
        return told.contains("Listening");
    }));
    here.speak(said);
    beside->write("\n");
    ASSERT_TRUE(waitUntil([&] { return beside->state() == QProcess::NotRunning; }));
    EXPECT_EQ(beside->exitCode(), 0) << beside->readAllStandardError().constData();
    EXPECT_EQ(counted("dictations"), 2);
    dictateHere();
    EXPECT_EQ(counted("dictations"), 3);
    EXPECT_GT(once, 0);
    EXPECT_EQ(counted("words"), 3 * once);
}

TEST(ResidentProgram, AStartThatFailsSaysWhy)
{
    ResidentDesktop here;
    here.launch();
    here.sound.kill();
    ASSERT_TRUE(waitUntil([&] { return here.tulvane(words("start")).status == 1; }));
    const auto failed = here.tulvane(words("start"));
    EXPECT_EQ(failed.err, QStringLiteral("tulvane: No microphone is available.\n"));
    EXPECT_EQ(here.status()[QStringLiteral("message")], QStringLiteral("No microphone is available."));
}

} // namespace tulvane::test
