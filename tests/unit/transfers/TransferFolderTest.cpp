#include <platform/linux/transfers/TransferFolder.h>
#include <support/ScratchFolder.h>

#include <QDateTime>
#include <QFileInfo>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <unistd.h>

#include <limits>

namespace tulvane::transfers {
namespace {

using namespace std::chrono_literals;
using State = TransferRecord::State;

class Folder : public ::testing::Test {
protected:
    Folder() : m_folder(m_scratch.file(QStringLiteral("a/Downloads"))) { EXPECT_TRUE(m_folder.make()); }

    TransferRecord put(const QString& name, State state, bool aside = false)
    {
        TransferRecord record = TransferRecord::of({QUrl(u"https://hub.example/" + name), {}, 0});
        record.state = state;
        record.aside = aside;
        EXPECT_TRUE(m_folder.save(record));
        return record;
    }
    void touch(const QString& path, const QByteArray& content = "x") const
    {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    void age(const QString& path, int days) const
    {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadWrite));
        EXPECT_TRUE(
            file.setFileTime(QDateTime::currentDateTime().addDays(-days), QFileDevice::FileModificationTime));
    }
    [[nodiscard]] QStringList names() const
    {
        return QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }

    test::ScratchFolder m_scratch;
    TransferFolder m_folder;
};

TEST_F(Folder, OnlyTheUserCanEnterIt)
{
    EXPECT_EQ(QFileInfo(m_folder.path()).permissions() & 0x0fff,
              QFileDevice::ReadUser | QFileDevice::WriteUser | QFileDevice::ExeUser);
}

TEST_F(Folder, KeepsRecordsForTheUserOnly)
{
    const TransferRecord record = put(QStringLiteral("a"), State::paused);
    EXPECT_EQ(m_folder.load(record.key()), record);
    EXPECT_EQ(m_folder.records(), QList<TransferRecord>{record});
    EXPECT_EQ(QFileInfo(m_folder.recordFile(record.key())).permissions() & 0x0fff,
              QFileDevice::ReadUser | QFileDevice::WriteUser);
}

TEST_F(Folder, HasWorkWhileSomethingRunsOrWaitsToBeTaken)
{
    EXPECT_FALSE(m_folder.hasWork());
    put(QStringLiteral("a"), State::paused);
    EXPECT_FALSE(m_folder.hasWork());
    put(QStringLiteral("b"), State::finished);
    EXPECT_TRUE(m_folder.hasWork());
    m_folder.forget(TransferRecord::keyOf(QUrl(QStringLiteral("https://hub.example/b"))));
    EXPECT_FALSE(m_folder.hasWork());
    put(QStringLiteral("c"), State::running);
    EXPECT_TRUE(m_folder.hasWork());
}

TEST_F(Folder, ADamagedRecordGoesWithItsFiles)
{
    const QString key = put(QStringLiteral("a"), State::paused).key();
    touch(m_folder.partialFile(key));
    touch(m_folder.recordFile(key), "{");
    EXPECT_TRUE(m_folder.records().isEmpty());
    EXPECT_TRUE(names().isEmpty());
}

TEST_F(Folder, ARecordUnderAForeignNameIsNotBelieved)
{
    const QString key = put(QStringLiteral("a"), State::paused).key();
    const QString foreign = QString(16, u'0');
    ASSERT_TRUE(QFile::rename(m_folder.recordFile(key), m_folder.recordFile(foreign)));
    EXPECT_FALSE(m_folder.load(foreign));
}

TEST_F(Folder, SettlingAFinishedFileLeavesNothing)
{
    const TransferRecord record = put(QStringLiteral("a"), State::finished);
    touch(m_folder.partialFile(record.key()));
    m_folder.settle(record);
    EXPECT_TRUE(names().isEmpty());
}

TEST_F(Folder, SettlingAnAnswerThatWasPutAsideKeepsThePartialFile)
{
    const TransferRecord record = put(QStringLiteral("a"), State::finished, true);
    touch(m_folder.partialFile(record.key()));
    touch(m_folder.asideFile(record.key()));
    m_folder.settle(record);
    EXPECT_EQ(names(), (QStringList{record.key() + u".json", record.key() + u".part"}));
    EXPECT_EQ(m_folder.load(record.key())->state, State::paused);
    m_folder.settle(put(QStringLiteral("b"), State::finished, true));
    EXPECT_EQ(names().size(), 2);
}

TEST_F(Folder, TheAbandonedIsDroppedUnlessAProcessWritesIt)
{
    const QString old = put(QStringLiteral("old"), State::paused).key();
    const QString busy = put(QStringLiteral("busy"), State::paused).key();
    const QString fresh = put(QStringLiteral("fresh"), State::paused).key();
    for (const QString& key : {old, busy, fresh})
        touch(m_folder.partialFile(key));
    age(m_folder.recordFile(old), 31);
    age(m_folder.recordFile(busy), 31);
    const int held = ::open(QFile::encodeName(m_folder.partialFile(busy)).constData(), O_RDWR | O_CLOEXEC);
    ASSERT_EQ(::flock(held, LOCK_EX), 0);
    m_folder.dropAbandoned();
    ::close(held);
    QStringList expected;
    for (const QString& key : {busy, fresh})
        expected << key + u".json" << key + u".part";
    expected.sort();
    EXPECT_EQ(names(), expected);
}

TEST_F(Folder, WhatPausedTransfersLeftIsListed)
{
    const TransferRecord paused = put(QStringLiteral("paused"), State::paused);
    touch(m_folder.partialFile(paused.key()), "12345");
    touch(m_folder.partialFile(put(QStringLiteral("running"), State::running).key()), "123");
    EXPECT_EQ(m_folder.remnants(), (QList<TransferRemnant>{{paused.url, 5}}));
}

TEST_F(Folder, KnowsTheFreeSpaceBeforeItIsMade)
{
    const qint64 free = TransferFolder(m_folder.path() + u"/not/made/yet").freeSpace();
    EXPECT_GT(free, 0);
    EXPECT_LT(free, std::numeric_limits<qint64>::max());
}

TEST_F(Folder, TidyingDropsTheAbandonedAndTheUnknown)
{
    const QString fresh = put(QStringLiteral("fresh"), State::paused).key();
    const QString old = put(QStringLiteral("old"), State::paused).key();
    const QString oldRunning = put(QStringLiteral("running"), State::running).key();
    for (const QString& key : {fresh, old, oldRunning})
        touch(m_folder.partialFile(key));
    touch(m_folder.recordFile(fresh) + u".Xy12zZ");
    touch(m_folder.partialFile(QString(16, u'0')));
    touch(m_folder.keeperFile());
    age(m_folder.recordFile(old), 31);
    age(m_folder.recordFile(oldRunning), 31);
    m_folder.tidy(24h * 30);
    QStringList expected{QStringLiteral("keeper")};
    for (const QString& key : {fresh, oldRunning})
        expected << key + u".json" << key + u".part";
    expected.sort();
    EXPECT_EQ(names(), expected);
}

} // namespace
} // namespace tulvane::transfers
