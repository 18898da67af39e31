#include <base/Log.h>
#include <base/PrivateFolder.h>
#include <models/ModelManager.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QFutureWatcher>

#include <algorithm>
#include <filesystem>
#include <utility>

namespace tulvane {

namespace {

using namespace std::chrono_literals;

// Another program's check tells by a change of the folder; its death does not, so that is asked for.
constexpr auto otherProgramPoll = 1s;

double fractionOf(qint64 written, qint64 expected, const WhisperModel& model)
{
    const qint64 total = expected > 0 ? expected : model.approximateSizeBytes;
    if (total < 1)
        return 0;
    return std::min(static_cast<double>(written) / static_cast<double>(total), 1.0);
}

/// Removes a file or a folder with all that is in it; one that is not there is removed already.
Result<void, ModelError> removeIfPresent(const QString& path)
{
    std::error_code error;
    std::filesystem::remove_all(std::filesystem::path(path.toStdU16String()), error);
    if (!error)
        return {};
    return failure(ModelError::fileSystem(path + u": " + QString::fromStdString(error.message())));
}

} // namespace

ModelManager::ModelManager(const Options& options, BackgroundTransfers& transfers)
    : m_options(options),
      m_transfers(transfers),
      m_installer([this](const WhisperModel& model, const ModelInstaller::Outcome& outcome) {
          noteInstalled(model, outcome);
      })
{
    makePrivateFolder(modelsDirectory());
    refreshStates();
    m_otherProgramPoll.setInterval(otherProgramPoll);
    connect(&m_otherProgramPoll, &QTimer::timeout, this, &ModelManager::lookAgain);
    connect(&m_folderWatch, &QFileSystemWatcher::directoryChanged, this, &ModelManager::lookAgain);
    if (QFileInfo::exists(modelsDirectory()))
        m_folderWatch.addPath(modelsDirectory());
    m_transfers.setEvents(events());
    recoverStaged();
    if (m_options.mode == SessionMode::background)
        reattach();
    else
        m_attached = true;
}

ModelManager::~ModelManager()
{
    m_transfers.setEvents({});
}

TransferEvents ModelManager::events()
{
    return {
        [this](TransferId task, qint64 written, qint64 expected) { noteProgress(task, written, expected); },
        [this](TransferId task, int status, const QString& file) { return takeFinished(task, status, file); },
        [this](TransferId task, const std::optional<TransferError>& error) { noteCompleted(task, error); },
        [this] { noteEventsDelivered(); },
    };
}

bool ModelManager::isDownloaded(const WhisperModel& model) const
{
    return QFileInfo::exists(fileURL(model));
}

QString ModelManager::fileURL(const WhisperModel& model) const
{
    return m_options.folders.modelFile(model.id);
}

QByteArray ModelManager::userAgent()
{
    const QString version = QCoreApplication::applicationVersion();
    return "Tulvane/" + (version.isEmpty() ? QByteArray("0") : version.toUtf8());
}

const WhisperModel* ModelManager::entry(const QString& id) const
{
    const auto found = std::ranges::find(m_options.catalogue, id, &WhisperModel::id);
    return found == m_options.catalogue.end() ? nullptr : &*found;
}

void ModelManager::setState(const QString& id, const State& state)
{
    if (m_states.contains(id) && m_states.value(id) == state)
        return;
    m_states.insert(id, state);
    Q_EMIT stateChanged(id, state);
}

void ModelManager::setStateByPresence(const WhisperModel& model)
{
    setState(model.id, isDownloaded(model) ? State::ready() : State::notDownloaded());
}

void ModelManager::refreshStates()
{
    for (const WhisperModel& model : m_options.catalogue) {
        const State::Kind kind = state(model.id).kind();
        if (kind != State::Kind::downloading && kind != State::Kind::verifying)
            setStateByPresence(model);
    }
}

void ModelManager::download(const WhisperModel& model)
{
    const State::Kind kind = state(model.id).kind();
    // A file that is being checked would be fetched a second time for nothing.
    if (kind == State::Kind::downloading || kind == State::Kind::verifying || isDownloaded(model))
        return;
    if (StagedModel::find(m_options.folders, model.id) == StagedModel::Found::otherProgram)
        return followOtherProgram(model);
    const auto resumable = m_resumeData.extract(model.id);
    TransferId task = 0;
    if (!resumable.empty()) {
        task = m_transfers.resume(resumable.mapped());
        qCInfo(lcModels).noquote() << "Resuming download of" << model.id;
    } else {
        const QUrl url = model.downloadURL(m_options.hub);
        task = m_transfers.start({url, userAgent(), model.approximateSizeBytes});
        qCInfo(lcModels).noquote() << "Starting download of" << model.id << "from" << url.toString();
    }
    m_tasks[task] = model.id;
    m_activeTasks[model.id] = task;
    setState(model.id, State::downloading(0));
}

void ModelManager::cancel(const WhisperModel& model)
{
    const auto task = m_activeTasks.find(model.id);
    if (task != m_activeTasks.end())
        m_transfers.cancel(task->second);
}

Result<void, ModelError> ModelManager::deleteModel(const WhisperModel& model)
{
    cancel(model);
    m_installer.abandon(model.id);
    if (auto removed = removeIfPresent(fileURL(model)); !removed)
        return removed;
    if (auto removed = removeIfPresent(m_options.folders.encoder(model.id)); !removed)
        return removed;
    m_transfers.discard(model.downloadURL(m_options.hub));
    m_resumeData.erase(model.id);
    setState(model.id, State::notDownloaded());
    return {};
}

qint64 ModelManager::leftoverBytes() const
{
    qint64 sum = 0;
    for (const TransferRemnant& remnant : m_transfers.remnants())
        sum += remnant.bytes;
    return sum;
}

bool ModelManager::hasResumableLeftovers() const
{
    return std::ranges::any_of(m_transfers.remnants(), [this](const TransferRemnant& remnant) {
        return std::ranges::any_of(catalogue(), [&](const WhisperModel& model) {
            return model.downloadURL(m_options.hub) == remnant.url;
        });
    });
}

void ModelManager::freeLeftovers()
{
    for (const TransferRemnant& remnant : m_transfers.remnants())
        m_transfers.discard(remnant.url);
    m_resumeData.clear();
}

void ModelManager::noteProgress(TransferId task, qint64 written, qint64 expected)
{
    const auto id = m_tasks.find(task);
    const WhisperModel* const model = id == m_tasks.end() ? nullptr : entry(id->second);
    // A model that was deleted meanwhile stays deleted, whatever its cancelled task still says.
    if (model != nullptr && state(model->id).kind() == State::Kind::downloading)
        setState(model->id, State::downloading(fractionOf(written, expected, *model)));
}

bool ModelManager::takeFinished(TransferId task, int httpStatus, const QString& file)
{
    const auto id = m_tasks.find(task);
    const WhisperModel* const model = id == m_tasks.end() ? nullptr : entry(id->second);
    if (model == nullptr || state(model->id).kind() == State::Kind::notDownloaded)
        return true;
    if (httpStatus < 200 || httpStatus > 299) {
        QFile::remove(file);
        setState(model->id, State::failed(ModelError::httpStatus(httpStatus).description()));
        return true;
    }
    setState(model->id, State::verifying());
    // Here and now: the file is gone when this returns.
    auto staged = StagedModel::adopt(m_options.folders, model->id, file);
    if (!staged) {
        noteInstalled(*model, {.abandoned = false, .error = staged.error()});
        return false;
    }
    m_installer.install(*model, *std::move(staged));
    return true;
}

void ModelManager::noteInstalled(const WhisperModel& model, const ModelInstaller::Outcome& outcome)
{
    if (outcome.abandoned) {
        if (state(model.id).kind() == State::Kind::verifying)
            setStateByPresence(model);
        return;
    }
    if (outcome.error) {
        const QString description = outcome.error->description();
        setState(model.id, State::failed(description));
        qCCritical(lcModels).noquote() << "Model" << model.id << "verification failed:" << description;
        return;
    }
    setState(model.id, State::ready());
    qCInfo(lcModels).noquote() << "Model" << model.id << "ready at" << fileURL(model);
}

void ModelManager::noteCompleted(TransferId task, const std::optional<TransferError>& error)
{
    const auto known = m_tasks.extract(task);
    if (known.empty())
        return;
    const QString& id = known.mapped();
    const auto active = m_activeTasks.find(id);
    // After a deletion a new task may have begun before the cancelled one has ended.
    const bool isCurrent = active != m_activeTasks.end() && active->second == task;
    if (isCurrent)
        m_activeTasks.erase(active);
    if (error && !error->resumeData().isEmpty())
        m_resumeData[id] = error->resumeData();
    const WhisperModel* const model = entry(id);
    const bool isDownloading = state(id).kind() == State::Kind::downloading;
    if (!isCurrent || model == nullptr)
        return;
    if (!error) {
        // Without a file: another program has taken it.
        if (isDownloading)
            followOtherProgram(*model);
    } else if (error->kind() == TransferError::Kind::cancelled) {
        if (isDownloading)
            setState(id, State::notDownloaded());
    } else {
        const QString description = error->description();
        setState(id, State::failed(description));
        qCCritical(lcModels).noquote() << "Download of" << id << "failed:" << description;
    }
}

void ModelManager::setBackgroundEventsCompletionHandler(std::function<void()> handler)
{
    m_eventsHandler = std::move(handler);
}

void ModelManager::noteEventsDelivered()
{
    if (const auto handler = std::exchange(m_eventsHandler, nullptr))
        handler();
}

void ModelManager::reattach()
{
    // A watcher, not a continuation: it ends with its owner, whenever the answer comes.
    auto* const watcher = new QFutureWatcher<QList<TransferTask>>(this);
    connect(watcher, &QFutureWatcherBase::finished, this, [this, watcher] {
        watcher->deleteLater();
        if (watcher->future().resultCount() > 0)
            adopt(watcher->result());
        m_attached = true;
        Q_EMIT attached();
    });
    watcher->setFuture(m_transfers.tasks());
}

void ModelManager::adopt(const QList<TransferTask>& tasks)
{
    for (const TransferTask& task : tasks) {
        if (task.state != TransferTask::State::running && task.state != TransferTask::State::suspended)
            continue;
        const auto model = std::ranges::find_if(m_options.catalogue, [&](const WhisperModel& each) {
            return each.downloadURL(m_options.hub) == task.originalUrl;
        });
        if (model == m_options.catalogue.end())
            continue;
        m_tasks[task.id] = model->id;
        m_activeTasks[model->id] = task.id;
        setState(model->id, State::downloading(fractionOf(task.received, task.expected, *model)));
        qCInfo(lcModels).noquote() << "Re-attached background download of" << model->id;
    }
}

void ModelManager::recoverStaged()
{
    for (const WhisperModel& model : m_options.catalogue) {
        if (auto staged = StagedModel::recover(m_options.folders, model.id)) {
            setState(model.id, State::verifying());
            m_installer.install(model, std::move(staged));
        } else if (StagedModel::find(m_options.folders, model.id) == StagedModel::Found::otherProgram) {
            followOtherProgram(model);
        }
    }
}

void ModelManager::followOtherProgram(const WhisperModel& model)
{
    if (StagedModel::find(m_options.folders, model.id) == StagedModel::Found::otherProgram) {
        setState(model.id, State::verifying());
        m_verifiedElsewhere.insert(model.id);
        m_otherProgramPoll.start();
        return;
    }
    m_verifiedElsewhere.erase(model.id);
    if (auto staged = StagedModel::recover(m_options.folders, model.id)) {
        setState(model.id, State::verifying());
        m_installer.install(model, std::move(staged));
        return;
    }
    setStateByPresence(model);
}

void ModelManager::lookAgain()
{
    for (const QString& id : std::set<QString>(m_verifiedElsewhere)) {
        if (const WhisperModel* const model = entry(id))
            followOtherProgram(*model);
    }
    if (m_verifiedElsewhere.empty())
        m_otherProgramPoll.stop();
    for (const WhisperModel& model : m_options.catalogue) {
        const State::Kind kind = state(model.id).kind();
        const bool isSettled = kind == State::Kind::ready || kind == State::Kind::notDownloaded;
        // A failure stays to be read until the file is there after all.
        if (isSettled || (kind == State::Kind::failed && isDownloaded(model)))
            setStateByPresence(model);
    }
}

} // namespace tulvane
