#include <platform/linux/transfers/TransferFolder.h>
#include <support/Await.h>
#include <support/ScratchFolder.h>
#include <support/Signals.h>
#include <support/Soak.h>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <random>
#include <thread>

namespace tulvane::transfers {
namespace {

using namespace std::chrono_literals;

TransferRecord recordWith(qint64 bytes)
{
    TransferRecord record =
        TransferRecord::of({QUrl(QStringLiteral("https://hub.example/model.bin")), "Tulvane/1", 539'000'000});
    record.etag = QByteArray(4000, 'e');
    record.size = 539'000'000;
    record.state = TransferRecord::State::running;
    record.safeBytes = bytes;
    return record;
}

/// Saves ever later states of a download until it is killed.
pid_t saveInChild(const TransferFolder& folder, qint64 from)
{
    const pid_t child = ::fork();
    if (child != 0)
        return child;
    for (qint64 bytes = from + 1; folder.save(recordWith(bytes)); ++bytes) {
    }
    ::_exit(1);
}

TEST(RecordCrash, AKillDuringASaveLeavesTheOldRecordOrTheNewOne)
{
    const test::ScratchFolder scratch;
    const TransferFolder folder(scratch.file(QStringLiteral("Downloads")));
    ASSERT_TRUE(folder.make());
    ASSERT_TRUE(folder.save(recordWith(1)));
    const QString key = recordWith(1).key();
    const auto saved = [&] {
        const auto record = folder.load(key);
        return record ? record->safeBytes : -1;
    };
    // A fixed seed names the moments; the scheduler moves them.
    std::mt19937 random(20251120);
    qint64 last = 1;
    for (int kill = 0; kill < test::soakCount(50, 1000); ++kill) {
        const pid_t child = saveInChild(folder, last);
        const bool started = test::waitUntil([&] { return saved() > last; });
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 5000));
        test::sendSignal(child, SIGKILL);
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        ASSERT_TRUE(WIFSIGNALED(status)) << "a save failed";
        ASSERT_TRUE(started);
        const auto found = folder.load(key);
        ASSERT_TRUE(found) << "kill " << kill;
        EXPECT_EQ(*found, recordWith(found->safeBytes));
        ASSERT_GT(found->safeBytes, last);
        last = found->safeBytes;
    }
    // What the last moments left beside it goes when the next helper starts.
    folder.tidy(24h);
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden), QStringList{key + u".json"});
}

} // namespace
} // namespace tulvane::transfers
