#include <base/AtomicFile.h>
#include <base/PrivateFolder.h>
#include <platform/linux/transfers/TransferFolder.h>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStorageInfo>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <limits>

namespace tulvane::transfers {

namespace {

constexpr auto usersFile = QFileDevice::ReadOwner | QFileDevice::WriteOwner;
// A record is a few hundred bytes; anything longer is not one.
constexpr qint64 longestRecord = 64 * 1024;

} // namespace

bool TransferFolder::make() const
{
    if (!makePrivateFolder(m_path))
        return false;
    return QFile::setPermissions(m_path, usersFile | QFileDevice::ExeOwner);
}

bool TransferFolder::save(const TransferRecord& record) const
{
    return replaceFile(recordFile(record.key()), record.toJson()).has_value();
}

std::optional<TransferRecord> TransferFolder::load(const QString& key) const
{
    QFile file(recordFile(key));
    if (!file.open(QIODevice::ReadOnly) || file.size() > longestRecord)
        return std::nullopt;
    auto record = TransferRecord::fromJson(file.readAll());
    // A record under another name than its address's would have two partial files for one address.
    if (record && record->key() != key)
        return std::nullopt;
    return record;
}

QList<TransferRecord> TransferFolder::records() const
{
    QList<TransferRecord> found;
    const QStringList names = QDir(m_path).entryList({QStringLiteral("*.json")}, QDir::Files, QDir::Name);
    for (const QString& name : names) {
        const QString key = QFileInfo(name).completeBaseName();
        if (auto record = load(key))
            found.append(*record);
        else
            forget(key);
    }
    return found;
}

bool TransferFolder::hasWork() const
{
    return std::ranges::any_of(records(), [](const TransferRecord& record) {
        return record.state != TransferRecord::State::paused;
    });
}

void TransferFolder::settle(const TransferRecord& record) const
{
    const QString key = record.key();
    QFile::remove(finishedFile(record));
    if (!record.aside || !QFile::exists(partialFile(key))) {
        forget(key);
        return;
    }
    keep(record);
}

void TransferFolder::keep(const TransferRecord& record) const
{
    QFile::remove(asideFile(record.key()));
    TransferRecord left = record;
    left.state = TransferRecord::State::paused;
    left.aside = false;
    left.httpStatus = 0;
    if (!save(left))
        forget(record.key());
}

void TransferFolder::forget(const QString& key) const
{
    // The record goes first: a partial file without a record is not resumed, a record without its file is.
    QFile::remove(recordFile(key));
    QFile::remove(partialFile(key));
    QFile::remove(asideFile(key));
}

void TransferFolder::forgetIdle(const QString& key) const
{
    const int partial =
        ::open(QFile::encodeName(partialFile(key)).constData(), O_RDWR | O_CLOEXEC | O_NOFOLLOW);
    if (partial < 0 || ::flock(partial, LOCK_EX | LOCK_NB) == 0)
        forget(key);
    if (partial >= 0)
        ::close(partial);
}

QList<TransferRemnant> TransferFolder::remnants() const
{
    QList<TransferRemnant> list;
    for (const TransferRecord& record : records()) {
        if (record.state == TransferRecord::State::paused)
            list.append({record.url, QFileInfo(partialFile(record.key())).size()});
    }
    return list;
}

void TransferFolder::dropAbandoned(std::chrono::hours age) const
{
    const QDateTime oldest = QDateTime::currentDateTime().addSecs(-std::chrono::seconds(age).count());
    for (const TransferRecord& record : records()) {
        if (record.state == TransferRecord::State::paused &&
            QFileInfo(recordFile(record.key())).lastModified() < oldest)
            forgetIdle(record.key());
    }
}

qint64 TransferFolder::freeSpace() const
{
    QDir folder(m_path);
    while (!folder.exists() && !folder.isRoot())
        folder.setPath(QFileInfo(folder.path()).path());
    const qint64 free = QStorageInfo(folder).bytesAvailable();
    // What can't be asked must not stop a download.
    return free >= 0 ? free : std::numeric_limits<qint64>::max();
}

void TransferFolder::tidy(std::chrono::hours age) const
{
    dropAbandoned(age);
    QStringList known{keeperFile()};
    for (const TransferRecord& record : records()) {
        const QString key = record.key();
        known << recordFile(key) << partialFile(key) << asideFile(key);
    }
    const QFileInfoList entries = QDir(m_path).entryInfoList(QDir::Files | QDir::Hidden);
    for (const QFileInfo& entry : entries) {
        if (!known.contains(m_path + u'/' + entry.fileName()))
            QFile::remove(entry.filePath());
    }
}

} // namespace tulvane::transfers
