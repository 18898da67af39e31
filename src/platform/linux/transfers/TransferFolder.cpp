#include <base/AtomicFile.h>
#include <platform/linux/transfers/TransferFolder.h>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace tulvane::transfers {

namespace {

constexpr auto onlyTheUser = QFileDevice::ReadOwner | QFileDevice::WriteOwner;
// A record is a few hundred bytes; anything longer is not one.
constexpr qint64 longestRecord = 64 * 1024;

} // namespace

bool TransferFolder::make() const
{
    if (!QDir().mkpath(m_path))
        return false;
    return QFile::setPermissions(m_path, onlyTheUser | QFileDevice::ExeOwner);
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
    TransferRecord left = record;
    left.state = TransferRecord::State::paused;
    left.aside = false;
    left.httpStatus = 0;
    if (!save(left))
        forget(key);
}

void TransferFolder::forget(const QString& key) const
{
    // The record goes first: a partial file without a record is not resumed, a record without its file is.
    QFile::remove(recordFile(key));
    QFile::remove(partialFile(key));
    QFile::remove(asideFile(key));
}

void TransferFolder::tidy(std::chrono::hours age) const
{
    const QDateTime oldest = QDateTime::currentDateTime().addSecs(-std::chrono::seconds(age).count());
    QStringList known{keeperFile()};
    for (const TransferRecord& record : records()) {
        const QString key = record.key();
        if (record.state == TransferRecord::State::paused &&
            QFileInfo(recordFile(key)).lastModified() < oldest)
            forget(key);
        else
            known << recordFile(key) << partialFile(key) << asideFile(key);
    }
    const QFileInfoList entries = QDir(m_path).entryInfoList(QDir::Files | QDir::Hidden);
    for (const QFileInfo& entry : entries) {
        if (!known.contains(m_path + u'/' + entry.fileName()))
            QFile::remove(entry.filePath());
    }
}

} // namespace tulvane::transfers
