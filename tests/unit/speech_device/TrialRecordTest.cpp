#include <speech/device/TrialRecord.h>
#include <support/ScratchFolder.h>

#include <gtest/gtest.h>

namespace tulvane::test {
namespace {

const ComputingDevice card{.index = 0,
                           .name = QStringLiteral("Card"),
                           .kind = DeviceKind::discrete,
                           .driver = QStringLiteral("driver 1"),
                           .totalBytes = 2,
                           .freeBytes = 1};

TEST(TrialRecord, KnowsADeviceWithItsDriverAndThisVersionAlone)
{
    const ScratchFolder folder;
    const QString file = folder.file(QStringLiteral("below/record.json"));
    const TrialRecord record(file, QStringLiteral("1.0"));
    EXPECT_EQ(record.passed(card), std::nullopt);
    record.keep(card, true);
    EXPECT_EQ(record.passed(card), true);
    EXPECT_EQ(TrialRecord(file, QStringLiteral("1.1")).passed(card), std::nullopt);
    ComputingDevice newer = card;
    newer.driver = QStringLiteral("driver 2");
    EXPECT_EQ(record.passed(newer), std::nullopt);
    record.keep(newer, false);
    EXPECT_EQ(record.passed(newer), false);
    EXPECT_EQ(record.passed(card), std::nullopt);
}

TEST(TrialRecord, ADamagedFileIsATrialMore)
{
    const ScratchFolder folder;
    const QString path = folder.write(QStringLiteral("record.json"), "{\"Card\": [1, 2");
    const TrialRecord record(path, QStringLiteral("1.0"));
    EXPECT_EQ(record.passed(card), std::nullopt);
    record.keep(card, false);
    EXPECT_EQ(record.passed(card), false);
}

} // namespace
} // namespace tulvane::test
