#pragma once

#include <platform/linux/transfers/TransferRecord.h>

#include <QList>
#include <QString>

#include <chrono>
#include <optional>

namespace tulvane::transfers {

/// The folder that holds partial files and their records. It lies on the file system that the files end up
/// on, so that handing one over is a rename. Only the user can enter it. Any thread; one process at a time
/// changes the files of one key (the one that holds the lock on its partial file).
class TransferFolder final {
public:
    /// Paused and left alone for so long, bytes are dropped.
    static constexpr std::chrono::hours keepPaused{24 * 30};

    explicit TransferFolder(const QString& path) : m_path(path) {}

    [[nodiscard]] const QString& path() const { return m_path; }
    [[nodiscard]] QString partialFile(const QString& key) const { return m_path + u'/' + key + u".part"; }
    [[nodiscard]] QString recordFile(const QString& key) const { return m_path + u'/' + key + u".json"; }
    /// Where a response goes that is not the file, while the partial file is kept.
    [[nodiscard]] QString asideFile(const QString& key) const { return m_path + u'/' + key + u".answer"; }
    /// Locked by the folder's one keeper while it lives; holds the address of its socket.
    [[nodiscard]] QString keeperFile() const { return m_path + u"/keeper"; }
    /// The file of a finished record that is to be handed over.
    [[nodiscard]] QString finishedFile(const TransferRecord& record) const
    {
        return record.aside ? asideFile(record.key()) : partialFile(record.key());
    }

    /// Makes the folder. False when it can't be.
    [[nodiscard]] bool make() const;
    /// Writes the record whole or not at all. False when it can't be.
    [[nodiscard]] bool save(const TransferRecord& record) const;
    [[nodiscard]] std::optional<TransferRecord> load(const QString& key) const;
    /// All readable records. One whose text makes no sense is removed with its files: nothing can use them.
    [[nodiscard]] QList<TransferRecord> records() const;
    /// Whether a record waits for a helper: running, or finished and not taken.
    [[nodiscard]] bool hasWork() const;

    /// After a hand-over: removes the handed file and, unless a partial file is left to resume, the record
    /// too.
    void settle(const TransferRecord& record) const;
    /// After a hand-over that failed: what is there waits to be asked for again.
    void keep(const TransferRecord& record) const;
    void forget(const QString& key) const;
    /// The same, unless a process is writing the partial file.
    void forgetIdle(const QString& key) const;
    /// What paused transfers have left.
    [[nodiscard]] QList<TransferRemnant> remnants() const;
    /// Removes what was paused and then left alone for longer than `age`. Any process may.
    void dropAbandoned(std::chrono::hours age = keepPaused) const;
    /// Bytes that the file system of the folder has left for this user, whether or not the folder is there.
    [[nodiscard]] qint64 freeSpace() const;
    /// Does what `dropAbandoned` does, and removes files that no record knows,
    /// such as a record that was being written when its process was killed. Only for the folder's keeper.
    void tidy(std::chrono::hours age) const;

private:
    QString m_path;
};

} // namespace tulvane::transfers
