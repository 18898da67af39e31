#pragma once

#include <models/ModelManager.h>
#include <platform/linux/transfers/http/HttpOptions.h>
#include <support/HubServer.h>
#include <support/ScratchFolder.h>

#include <QRandomGenerator>

#include <gtest/gtest.h>

#include <memory>
#include <optional>

namespace tulvane::test {

enum class TransferKind { inProcess, detached };

/// A hub with one model, folders of one's own, and programs ("managers") that download it. Sizes are small,
/// so that a test can do it often; the checksum proves that what is installed is right to the byte.
class DownloadRig {
public:
    explicit DownloadRig(TransferKind kind, qint64 size = 3'000'000);
    DownloadRig(const DownloadRig&) = delete;
    DownloadRig& operator=(const DownloadRig&) = delete;
    ~DownloadRig();

    /// One running program: its transfers and its manager.
    struct Program {
        std::unique_ptr<BackgroundTransfers> transfers;
        std::unique_ptr<ModelManager> manager;
    };

    [[nodiscard]] Program launch() const;
    /// The words that a program of its own process is given.
    [[nodiscard]] QStringList programArguments() const;
    /// Puts the model on the hub (again, with other bytes) and changes what the catalogue expects.
    void publish(const QByteArray& body);
    /// The faults of the next requests.
    void script(const QList<QJsonObject>& faults) { m_server.script(m_path, faults); }

    /// Asks for the download and waits until it has ended, one way or the other.
    [[nodiscard]] ModelState download(Program& program) const;
    /// A download that must end well, with the right bytes and nothing left over.
    void expectInstalled(Program& program) const;
    /// The right bytes are installed, and no other file is anywhere.
    void expectOnlyTheModel() const;
    /// Files in the folders, the keeper's note aside.
    [[nodiscard]] QStringList files() const;
    /// The first byte that each request asked for; 0 where it asked for everything.
    [[nodiscard]] QList<qint64> askedFrom() const;
    /// The addresses as the server was asked for them.
    [[nodiscard]] QStringList askedAddresses() const;
    /// How many bytes of the model an earlier try has left.
    [[nodiscard]] qint64 partialBytes() const;

    /// The processes that run as helpers for this rig's folder.
    [[nodiscard]] QList<int> helpers() const;
    [[nodiscard]] bool waitForNoHelper() const;

private:
    ScratchFolder m_scratch; // before the folders, which lie in it

public:
    QByteArray body;
    WhisperModel model;
    ModelFolders folders;
    transfers::HttpOptions http;
    int linger = 300;
    QUrl hub; ///< where the programs look for the model

private:
    TransferKind m_kind;
    HubServer m_server;
    QString m_path;
};

/// Bytes that begin like a model and are like no others.
[[nodiscard]] QByteArray randomModel(qint64 size);
/// A place to cut a body of this size, never at its very end.
[[nodiscard]] qint64 randomCut(qint64 size);

} // namespace tulvane::test
