#include <platform/linux/evdev/EvdevModifierEvents.h>
#include <platform/linux/evdev/KeyboardAccess.h>
#include <support/Paths.h>
#include <support/ScratchFolder.h>

#include <QFile>
#include <QProcess>
#include <QStandardPaths>

#include <gtest/gtest.h>
#include <unistd.h>

#include <optional>

namespace tulvane::test {

namespace {

struct Watched {
    QByteArray output;
    QByteArray errors;
};

/// What the watcher says on a machine with a recorded keyboard; none without the program that plays it.
std::optional<Watched> runOnKeyboard()
{
    if (QStandardPaths::findExecutable(QStringLiteral("umockdev-run")).isEmpty())
        return std::nullopt;
    const QString data = sourceFolder() + QStringLiteral("/tests/desktop/evdev/data/keyboard");
    const QString keys = sourceFolder() + QStringLiteral("/tests/desktop/evdev/data/keys.evemu");
    QProcess process;
    process.start(QStringLiteral("umockdev-run"),
                  {QStringLiteral("-d"), data + QStringLiteral(".umockdev"), QStringLiteral("-i"),
                   u"/dev/input/event1=" + data + u".ioctl", QStringLiteral("--evemu-events"),
                   u"/dev/input/event1=" + keys, QStringLiteral("--"),
                   QStringLiteral(TULVANE_MODIFIER_WATCHER)});
    EXPECT_TRUE(process.waitForFinished());
    return Watched{process.readAllStandardOutput(), process.readAllStandardError()};
}

TEST(EvdevTest, BothEdgesOfARecordedKeyboardAreTold)
{
    const auto watched = runOnKeyboard();
    if (!watched)
        GTEST_SKIP() << "not installed: umockdev";
    // The right Ctrl down and up, then the left Alt, with a space in between that is no modifier.
    EXPECT_EQ(watched->output.toStdString(), "62 40000\n62 0\n58 80000\n58 0\n")
        << watched->errors.toStdString();
}

TEST(EvdevTest, WithoutAKeyboardItSaysSo)
{
    const ScratchFolder empty;
    EvdevModifierEvents events(empty.path());
    const auto tap = events.createTap(62, [](const ModifierEvent&) {});
    ASSERT_FALSE(tap);
    EXPECT_EQ(tap.error().kind(), ModifierEventsError::Kind::unsupported);
    EXPECT_TRUE(events.readsEveryKey());
    EXPECT_EQ(keyboardAccess(empty.path()), KeyboardAccess::none);
    EXPECT_FALSE(obstacleOf(KeyboardAccess::none).remedy.isEmpty());
}

TEST(EvdevTest, AccessIsGrantedWhereAKeyboardCanBeRead)
{
    const auto watcher = runOnKeyboard();
    if (!watcher)
        GTEST_SKIP() << "not installed: umockdev";
    EXPECT_TRUE(watcher->errors.startsWith("access 0")) << watcher->errors.toStdString();
}

TEST(EvdevTest, ADeniedKeyboardHasAReasonAndARemedy)
{
    if (::geteuid() == 0)
        GTEST_SKIP() << "nothing is denied to root";
    const ScratchFolder folder;
    QFile device(folder.path() + QStringLiteral("/event0"));
    ASSERT_TRUE(device.open(QIODevice::WriteOnly));
    device.close();
    ASSERT_TRUE(device.setPermissions({}));
    EXPECT_EQ(keyboardAccess(folder.path()), KeyboardAccess::denied);
    EXPECT_TRUE(obstacleOf(KeyboardAccess::denied).remedy.contains(QStringLiteral("input")));
    EXPECT_TRUE(EvdevModifierEvents(folder.path())
                    .createTap(62, [](const ModifierEvent&) {})
                    .error()
                    .description()
                    .contains(QStringLiteral("usermod")));
}

} // namespace

} // namespace tulvane::test
