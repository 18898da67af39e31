#pragma once

#include <models/ModelFolders.h>
#include <models/ModelInstaller.h>
#include <models/ModelState.h>
#include <models/WhisperModel.h>
#include <ports/BackgroundTransfers.h>

#include <QFileSystemWatcher>
#include <QMap>
#include <QObject>
#include <QTimer>
#include <QUrl>

#include <functional>
#include <map>
#include <set>

namespace tulvane {

/// Owns the model files on disk: downloads, checks, places and deletes them, and knows of each catalogue
/// entry how far it is. Main thread, with an event loop.
class ModelManager final : public QObject {
    Q_OBJECT

public:
    using State = ModelState;

    /// Whether transfers outlive the program, so that those under way are to be taken up again. The program's
    /// own do; `ordinary` is for tests and previews.
    enum class SessionMode { background, ordinary };

    struct Options {
        ModelFolders folders = ModelFolders::standard();
        QUrl hub; ///< base address, ending in a slash; see `modelHubURL`
        SessionMode mode = SessionMode::background;
        QList<WhisperModel> catalogue = WhisperModel::all();
    };

    /// Makes the models folder (a failure shows later, when a file can't be placed), reads the states, goes
    /// on with files that an earlier program left unchecked, and in background mode takes up running
    /// transfers.
    ModelManager(const Options& options, BackgroundTransfers& transfers);
    Q_DISABLE_COPY_MOVE(ModelManager)
    ~ModelManager() override;

    /// By model identifier; one for each catalogue entry.
    [[nodiscard]] const QMap<QString, State>& states() const { return m_states; }
    /// `notDownloaded` for an unknown identifier.
    [[nodiscard]] State state(const QString& id) const { return m_states.value(id); }
    [[nodiscard]] const QList<WhisperModel>& catalogue() const { return m_options.catalogue; }
    [[nodiscard]] const QString& modelsDirectory() const { return m_options.folders.models; }

    /// Whether a file lies at the model's place.
    [[nodiscard]] bool isDownloaded(const WhisperModel& model) const;
    /// The model's place, whether or not a file is there.
    [[nodiscard]] QString fileURL(const WhisperModel& model) const;
    /// Reads the disk again. What is downloading or verifying is left; an old failure is forgotten.
    void refreshStates();
    /// Starts or resumes the download. Does nothing while one runs or is checked, here or in another program,
    /// or when the file is there.
    void download(const WhisperModel& model);
    /// Ends the model's download; what has arrived is kept for the next one.
    void cancel(const WhisperModel& model);
    /// Removes the model's file, ends its download, and removes what one has left. Fails with the file
    /// system's error, and then the state is left as it was.
    [[nodiscard]] Result<void, ModelError> deleteModel(const WhisperModel& model);

    /// Bytes on the disk that cancelled and failed downloads have left, those of models that the catalogue no
    /// longer has included. Reads the disk.
    [[nodiscard]] qint64 leftoverBytes() const;
    /// Whether some of them are a part of a model that could still be downloaded: freeing destroys progress.
    [[nodiscard]] bool hasResumableLeftovers() const;
    /// Removes them; a later download starts from the beginning.
    void freeLeftovers();

    /// False until the transfers under way have been taken up; always true in ordinary mode.
    [[nodiscard]] bool isAttached() const { return m_attached; }
    /// Called once, and then cleared, when everything that ended while no program ran has been delivered.
    void setBackgroundEventsCompletionHandler(std::function<void()> handler);
    /// What requests say of the program: "Tulvane/" and its version, or 0 when it has none.
    [[nodiscard]] static QByteArray userAgent();

Q_SIGNALS:
    void stateChanged(const QString& id, const tulvane::ModelState& state);
    /// `isAttached()` has become true.
    void attached();

private:
    void setState(const QString& id, const State& state);
    void setStateByPresence(const WhisperModel& model);
    [[nodiscard]] const WhisperModel* entry(const QString& id) const;
    [[nodiscard]] TransferEvents events();

    void noteProgress(TransferId task, qint64 written, qint64 expected);
    [[nodiscard]] bool takeFinished(TransferId task, int httpStatus, const QString& file);
    void noteCompleted(TransferId task, const std::optional<TransferError>& error);
    void noteEventsDelivered();
    void reattach();
    void adopt(const QList<TransferTask>& tasks);

    void noteInstalled(const WhisperModel& model, const ModelInstaller::Outcome& outcome);
    void recoverStaged();
    void followOtherProgram(const WhisperModel& model);
    void lookAgain();

    Options m_options;
    BackgroundTransfers& m_transfers;
    ModelInstaller m_installer;
    QMap<QString, State> m_states;
    std::map<TransferId, QString> m_tasks;
    std::map<QString, TransferId> m_activeTasks;
    std::map<QString, QByteArray> m_resumeData;
    std::set<QString> m_verifiedElsewhere;
    std::function<void()> m_eventsHandler;
    bool m_attached = false;
    QFileSystemWatcher m_folderWatch;
    QTimer m_otherProgramPoll;
};

} // namespace tulvane
