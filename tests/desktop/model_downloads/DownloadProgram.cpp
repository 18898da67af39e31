#include <models/ModelManager.h>
#include <platform/linux/transfers/DetachedTransfers.h>

#include <QCoreApplication>
#include <QJsonDocument>

#include <cstdio>

/// A program that downloads one model through the helper and prints each state, to be killed by a test.
///     download_program MODELS TEMPORARY HUB HELPER MODEL-AS-JSON [helper arguments...]
int main(int argc, char** argv)
{
    using namespace tulvane;
    constexpr int fixedArguments = 6;
    const QCoreApplication app(argc, argv);
    const QStringList words = QCoreApplication::arguments();
    if (words.size() < fixedArguments)
        return 2;
    const auto model = WhisperModel::fromJson(QJsonDocument::fromJson(words.at(5).toUtf8()).object());
    if (!model)
        return 2;
    const ModelFolders folders{words.at(1), words.at(2)};
    DetachedTransfers transfers(
        {.helper = words.at(4), .folder = folders.transfers(), .helperArguments = words.mid(fixedArguments)});
    ModelManager manager({.folders = folders, .hub = QUrl(words.at(3)), .catalogue = {*model}}, transfers);
    const auto show = [](const ModelState& state) {
        std::printf("%s %.6f %s\n", qPrintable(state.name()), state.fraction(), qPrintable(state.message()));
        std::fflush(stdout);
        if (state.kind() == ModelState::Kind::ready || state.kind() == ModelState::Kind::failed)
            QCoreApplication::exit(state.kind() == ModelState::Kind::ready ? 0 : 1);
    };
    QObject::connect(&manager, &ModelManager::stateChanged, &manager,
                     [&](const QString&, const ModelState& state) { show(state); });
    QObject::connect(&manager, &ModelManager::attached, &manager, [&] { manager.download(*model); });
    if (manager.isDownloaded(*model))
        QMetaObject::invokeMethod(&manager, [&] { show(manager.state(model->id)); }, Qt::QueuedConnection);
    return QCoreApplication::exec();
}
