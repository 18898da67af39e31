#include <platform/linux/evdev/EvdevModifierEvents.h>
#include <support/Paths.h>
#include <support/ScratchFolder.h>

#include <QProcess>
#include <QStandardPaths>

#include <gtest/gtest.h>

namespace tulvane::test {

namespace {

TEST(EvdevTest, BothEdgesOfARecordedKeyboardAreTold)
{
    if (QStandardPaths::findExecutable(QStringLiteral("umockdev-run")).isEmpty())
        GTEST_SKIP() << "not installed: umockdev";
    const QString data = sourceFolder() + QStringLiteral("/tests/desktop/evdev/data/keyboard");
    const QString keys = sourceFolder() + QStringLiteral("/tests/desktop/evdev/data/keys.evemu");
    QProcess process;
    process.start(QStringLiteral("umockdev-run"),
                  {QStringLiteral("-d"), data + QStringLiteral(".umockdev"), QStringLiteral("-i"),
                   u"/dev/input/event1=" + data + u".ioctl", QStringLiteral("--evemu-events"),
                   u"/dev/input/event1=" + keys, QStringLiteral("--"),
                   QStringLiteral(TULVANE_MODIFIER_WATCHER)});
    ASSERT_TRUE(process.waitForFinished());
    // The right Ctrl down and up, then the left Alt, with a space in between that is no modifier.
    EXPECT_EQ(process.readAllStandardOutput().toStdString(), "62 40000\n62 0\n58 80000\n58 0\n")
        << process.readAllStandardError().toStdString();
}

TEST(EvdevTest, WithoutAKeyboardItSaysSo)
{
    const ScratchFolder empty;
    EvdevModifierEvents events(empty.path());
    const auto tap = events.createTap(62, [](const ModifierEvent&) {});
    ASSERT_FALSE(tap);
    EXPECT_EQ(tap.error().kind(), ModifierEventsError::Kind::unsupported);
}

} // namespace

} // namespace tulvane::test
