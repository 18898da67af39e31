#include "DownloadRig.h"

#include <platform/linux/transfers/DetachedTransfers.h>
#include <platform/linux/transfers/TransferFolder.h>
#include <support/Await.h>
#include <support/Signals.h>
#include <support/transfers/InProcessTransfers.h>

#include <QCryptographicHash>
#include <QDirIterator>
#include <QFileInfo>
#include <QJsonDocument>

#include <algorithm>
#include <csignal>

namespace tulvane::test {

DownloadRig::DownloadRig(TransferKind kind, qint64 size)
    : model(WhisperModel::fallback()),
      folders{m_scratch.file(QStringLiteral("data/Tulvane/Models")), m_scratch.file(QStringLiteral("tmp"))},
      m_kind(kind)
{
    QDir().mkpath(folders.temporary);
    http.reserve = 0;
    hub = m_server.base();
    m_path = model.repo + u"/resolve/main/" + model.fileName;
    publish(randomModel(size));
}

DownloadRig::~DownloadRig()
{
    for (const int helper : helpers())
        sendSignal(helper, SIGKILL);
}

void DownloadRig::publish(const QByteArray& content)
{
    body = content;
    model.approximateSizeBytes = body.size();
    model.sha256 = QString::fromLatin1(QCryptographicHash::hash(body, QCryptographicHash::Sha256).toHex());
    m_server.put(m_path, body);
}

QStringList helperArguments(const transfers::HttpOptions& http, int linger)
{
    return {QStringLiteral("--retries"), QString::number(http.retries),
            QStringLiteral("--pause"),   QString::number(http.retryPause.count()),
            QStringLiteral("--stall"),   QString::number(http.stallTimeout.count()),
            QStringLiteral("--reserve"), QString::number(http.reserve),
            QStringLiteral("--linger"),  QString::number(linger)};
}

DownloadRig::Program DownloadRig::launch() const
{
    Program program;
    if (m_kind == TransferKind::inProcess)
        program.transfers = std::make_unique<InProcessTransfers>(folders.transfers(), http);
    else
        program.transfers = std::make_unique<DetachedTransfers>(
            DetachedTransfers::Options{.helper = QStringLiteral(TULVANE_TRANSFER_HELPER),
                                       .folder = folders.transfers(),
                                       .helperArguments = helperArguments(http, linger)});
    const auto mode = m_kind == TransferKind::detached ? ModelManager::SessionMode::background
                                                       : ModelManager::SessionMode::ordinary;
    program.manager = std::make_unique<ModelManager>(
        ModelManager::Options{.folders = folders, .hub = hub, .mode = mode, .catalogue = {model}},
        *program.transfers);
    EXPECT_TRUE(waitUntil([&] { return program.manager->isAttached(); }));
    return program;
}

QStringList DownloadRig::programArguments() const
{
    return QStringList{folders.models, folders.temporary, hub.toString(),
                       QStringLiteral(TULVANE_TRANSFER_HELPER),
                       QString::fromUtf8(QJsonDocument(model.toJson()).toJson(QJsonDocument::Compact))} +
           helperArguments(http, linger);
}

ModelState DownloadRig::download(Program& program) const
{
    const auto ended = [&] {
        const ModelState::Kind kind = program.manager->state(model.id).kind();
        return kind != ModelState::Kind::downloading && kind != ModelState::Kind::verifying;
    };
    program.manager->download(model);
    EXPECT_TRUE(waitUntil(ended));
    return program.manager->state(model.id);
}

void DownloadRig::expectInstalled(Program& program) const
{
    EXPECT_EQ(download(program), ModelState::ready())
        << qPrintable(program.manager->state(model.id).message());
    expectOnlyTheModel();
}

void DownloadRig::expectOnlyTheModel() const
{
    QFile installed(folders.modelFile(model.id));
    EXPECT_TRUE(installed.open(QIODevice::ReadOnly));
    EXPECT_TRUE(installed.readAll() == body);
    // The helper's own tidying up comes after the hand-over.
    const QStringList expected{folders.modelFile(model.id)};
    EXPECT_TRUE(waitUntil([&] { return files() == expected; })) << qPrintable(files().join(u' '));
}

QStringList DownloadRig::files() const
{
    QStringList found;
    for (const QString& folder : {folders.models, folders.temporary, folders.transfers()}) {
        QDirIterator entries(folder, QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
        while (entries.hasNext())
            found.append(entries.next());
    }
    found.removeAll(transfers::TransferFolder(folders.transfers()).keeperFile());
    return found;
}

QList<qint64> DownloadRig::askedFrom() const
{
    QList<qint64> list;
    for (const QJsonObject& request : m_server.requests()) {
        EXPECT_EQ(request.value(u"Accept-Encoding").toString(), QStringLiteral("identity"));
        EXPECT_EQ(request.value(u"User-Agent").toString().toUtf8(), ModelManager::userAgent());
        const QString range = request.value(u"Range").toString();
        list.append(range.isEmpty() ? 0 : range.mid(6, range.size() - 7).toLongLong());
    }
    return list;
}

QStringList DownloadRig::askedAddresses() const
{
    QStringList list;
    for (const QJsonObject& request : m_server.requests())
        list.append(request.value(u"path").toString());
    return list;
}

qint64 DownloadRig::partialBytes() const
{
    const transfers::TransferFolder folder(folders.transfers());
    const QUrl url = model.downloadURL(m_server.base());
    return QFileInfo(folder.partialFile(transfers::TransferRecord::keyOf(url))).size();
}

QList<int> DownloadRig::helpers() const
{
    QList<int> found;
    const QStringList processes = QDir(QStringLiteral("/proc")).entryList(QDir::Dirs);
    for (const QString& process : processes) {
        QFile words(u"/proc/" + process + u"/cmdline");
        if (process.toInt() <= 0 || !words.open(QIODevice::ReadOnly))
            continue;
        const QList<QByteArray> arguments = words.readAll().split('\0');
        if (arguments.constFirst() == TULVANE_TRANSFER_HELPER &&
            arguments.contains(folders.transfers().toUtf8()))
            found.append(process.toInt());
    }
    return found;
}

bool DownloadRig::waitForNoHelper() const
{
    return waitUntil([this] { return helpers().isEmpty(); });
}

QByteArray randomModel(qint64 size)
{
    QByteArray bytes(size, Qt::Uninitialized);
    for (char& byte : bytes)
        byte = static_cast<char>(QRandomGenerator::global()->generate());
    return bytes.replace(0, 4, QByteArray::fromHex("6c6d6767"));
}

qint64 randomCut(qint64 size)
{
    return QRandomGenerator::global()->bounded(size - 1) + 1;
}

} // namespace tulvane::test
