#include "DefaultsFolder.h"

#include <support/Await.h>
#include <support/Signals.h>
#include <support/Soak.h>

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <functional>
#include <random>
#include <thread>

namespace tulvane {
namespace {

constexpr uid_t nobody = 65534;

/// Runs the work in a process of its own, which ends with status 0 when the work returns true.
pid_t inChild(const std::function<bool()>& work)
{
    const pid_t child = ::fork();
    if (child == 0)
        ::_exit(work() ? 0 : 1);
    return child;
}

bool succeeded(pid_t child)
{
    int status = 0;
    return ::waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

/// A folder's permissions do not bind the superuser; the tests about them run as somebody else.
bool becomeOrdinaryUser()
{
    return ::geteuid() != 0 || ::setresuid(nobody, nobody, nobody) == 0;
}

struct DefaultsAcrossProcesses : ::testing::Test, test::DefaultsFolder {
    test::LogCapture log;

    void giveTo(const QString& file, mode_t mode) const
    {
        const QByteArray encoded = QFile::encodeName(file);
        if (::geteuid() == 0) {
            ASSERT_EQ(::chown(encoded.constData(), nobody, nobody), 0);
        }
        ASSERT_EQ(::chmod(encoded.constData(), mode), 0);
    }
};

TEST_F(DefaultsAcrossProcesses, TwoWritersLoseNothing)
{
    const int keys = test::soakCount(200, 2000);
    const auto writer = [this, keys](const QString& prefix) {
        return inChild([this, keys, prefix] {
            JsonUserDefaults defaults = open();
            defaults.setLockTimeout(std::chrono::minutes(10)); // the other may have the lock again and again
            for (int i = 0; i < keys; ++i) {
                if (!defaults.set(prefix + QString::number(i), i))
                    return false;
            }
            return true;
        });
    };
    const pid_t first = writer(u"first"_qs);
    const pid_t second = writer(u"second"_qs);
    EXPECT_TRUE(succeeded(first));
    EXPECT_TRUE(succeeded(second));
    const QVariantMap all = open().domain(domain).value();
    EXPECT_EQ(all.size(), 2 * keys);
    for (int i = 0; i < keys; ++i) {
        EXPECT_EQ(all.value(u"first%1"_qs.arg(i)), QVariant(qint64{i}));
        EXPECT_EQ(all.value(u"second%1"_qs.arg(i)), QVariant(qint64{i}));
    }
}

TEST_F(DefaultsAcrossProcesses, AWriterThatIsKilledLeavesAWholeFileAndNoLock)
{
    JsonUserDefaults witness = open();
    ASSERT_TRUE(witness.set(u"kept"_qs, u"always"_qs));
    std::mt19937 random(7);
    qint64 last = 0;
    for (int round = 0; round < test::soakCount(50, 1000); ++round) {
        const pid_t child = inChild([this] {
            JsonUserDefaults defaults = open();
            const QString filler = QString(20000, u'x');
            for (qint64 i = defaults.value(u"count"_qs).toLongLong();; ++i) {
                if (!defaults.set(u"filler"_qs, filler) || !defaults.set(u"count"_qs, i + 1))
                    return false;
            }
        });
        const bool started = test::waitUntil([&] { return witness.value(u"count"_qs).toLongLong() > last; });
        // From here the moment is meant to be any: before, within or between writes.
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 15000));
        test::sendSignal(child, SIGKILL);
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        ASSERT_TRUE(WIFSIGNALED(status)) << "the writer met a failure";
        ASSERT_TRUE(started) << "the writer wrote nothing";
        JsonUserDefaults after = open();
        EXPECT_EQ(after.value(u"kept"_qs), u"always"_qs);
        EXPECT_TRUE(troubles(after).isEmpty());
        const qint64 count = after.value(u"count"_qs).toLongLong();
        EXPECT_GT(count, last);
        last = count;
        after.setLockTimeout(std::chrono::milliseconds(0));
        ASSERT_TRUE(after.set(u"round"_qs, round)) << "the lock went with the process";
        EXPECT_TRUE(neighbours().isEmpty()) << "and nothing is left lying about";
    }
}

TEST_F(DefaultsAcrossProcesses, AFullDiskFailsTheWriteAndTheOldFileStands)
{
    {
        JsonUserDefaults defaults = open();
        ASSERT_TRUE(defaults.set(u"a"_qs, 1));
    }
    const QByteArray before = content();
    const pid_t child = inChild([this] {
        JsonUserDefaults defaults = open();
        const rlimit limit{1000, 1000}; // the kernel's nearest thing to a disk that has 1000 bytes left
        ::setrlimit(RLIMIT_FSIZE, &limit);
        (void)std::signal(SIGXFSZ, SIG_IGN);
        const auto result = defaults.set(u"vocabularyPrompt"_qs, QString(5000, u'x'));
        return !result && result.error() == DefaultsError::notWritten(path(), qt_error_string(EFBIG)) &&
               defaults.value(u"vocabularyPrompt"_qs).toString().size() == 5000;
    });
    EXPECT_TRUE(succeeded(child));
    EXPECT_EQ(content(), before);
    EXPECT_TRUE(neighbours().isEmpty());
}

TEST_F(DefaultsAcrossProcesses, AReadOnlyFolderFailsTheWriteAndTheValueHolds)
{
    write("{\"a\": 1}");
    ASSERT_NO_FATAL_FAILURE(giveTo(path(), 0600));
    ASSERT_NO_FATAL_FAILURE(giveTo(folder.path(), 0500));
    const pid_t child = inChild([this] {
        if (!becomeOrdinaryUser())
            return false;
        JsonUserDefaults defaults = open();
        const auto result = defaults.set(u"b"_qs, 2);
        return defaults.value(u"a"_qs) == QVariant(qint64{1}) &&
               defaults.value(u"b"_qs) == QVariant(qint64{2}) && !result &&
               result.error() == DefaultsError::notWritten(path(), qt_error_string(EACCES));
    });
    EXPECT_TRUE(succeeded(child));
    ::chmod(QFile::encodeName(folder.path()).constData(), 0700);
    EXPECT_EQ(content(), "{\"a\": 1}");
}

TEST_F(DefaultsAcrossProcesses, AFileThatMayNotBeReadIsToldAndNeverWritten)
{
    write("{\"a\": 1}");
    ASSERT_NO_FATAL_FAILURE(giveTo(path(), 0000));
    ASSERT_NO_FATAL_FAILURE(giveTo(folder.path(), 0700));
    const pid_t child = inChild([this] {
        if (!becomeOrdinaryUser())
            return false;
        JsonUserDefaults defaults = open();
        const bool refused = !defaults.contains(u"a"_qs) && !defaults.set(u"b"_qs, 2);
        const bool told =
            troubles(defaults) == QList{DefaultsError::unreadable(path(), qt_error_string(EACCES))};
        // Once it may be read again, the file and what waited in memory come together.
        ::chmod(QFile::encodeName(path()).constData(), 0600);
        return refused && told && defaults.value(u"a"_qs) == QVariant(qint64{1}) &&
               defaults.set(u"c"_qs, 3) && content() == "{\n  \"a\": 1,\n  \"b\": 2,\n  \"c\": 3\n}\n";
    });
    EXPECT_TRUE(succeeded(child));
    EXPECT_TRUE(neighbours().isEmpty()) << "it is not taken for a damaged one";
}

TEST_F(DefaultsAcrossProcesses, AFolderThatMayNotBeEnteredIsTold)
{
    write("{\"a\": 1}");
    ASSERT_NO_FATAL_FAILURE(giveTo(folder.path(), 0000));
    const pid_t child = inChild([this] {
        if (!becomeOrdinaryUser())
            return false;
        JsonUserDefaults defaults = open();
        return troubles(defaults) == QList{DefaultsError::unreadable(path(), qt_error_string(EACCES))} &&
               !defaults.set(u"b"_qs, 2);
    });
    EXPECT_TRUE(succeeded(child));
    ::chmod(QFile::encodeName(folder.path()).constData(), 0700);
    EXPECT_EQ(content(), "{\"a\": 1}");
}

TEST_F(DefaultsAcrossProcesses, ADamagedFileInAReadOnlyFolderStaysWhereItIs)
{
    write("{\"a\": ");
    ASSERT_NO_FATAL_FAILURE(giveTo(path(), 0600));
    ASSERT_NO_FATAL_FAILURE(giveTo(folder.path(), 0500));
    const pid_t child = inChild([this] {
        if (!becomeOrdinaryUser())
            return false;
        JsonUserDefaults defaults = open();
        return troubles(defaults) == QList{DefaultsError::damagedInPlace(path(), qt_error_string(EACCES))} &&
               !defaults.set(u"b"_qs, 2);
    });
    EXPECT_TRUE(succeeded(child));
    ::chmod(QFile::encodeName(folder.path()).constData(), 0700);
    EXPECT_EQ(content(), "{\"a\": ");
    EXPECT_TRUE(neighbours().isEmpty());
}

} // namespace
} // namespace tulvane
