#pragma once

#include <models/ModelState.h>
#include <models/WhisperModel.h>
#include <ui/viewmodels/TransferRate.h>

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace tulvane {

class AppSettings;
class Clock;
class DictationSession;
class ModelFigures;
class ModelManager;

/// One speech model as a card or a download control shows it. Main thread.
class ModelEntry final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    Q_PROPERTY(QString id READ id NOTIFY changed)
    Q_PROPERTY(QString name READ name NOTIFY changed)
    Q_PROPERTY(QString description READ description NOTIFY changed)
    Q_PROPERTY(QString precision READ precision NOTIFY changed)
    /// "539 MB"
    Q_PROPERTY(QString size READ size NOTIFY changed)
    Q_PROPERTY(bool selected READ isSelected NOTIFY changed)
    Q_PROPERTY(bool recommended READ isRecommended NOTIFY changed)
    Q_PROPERTY(State state READ state NOTIFY changed)
    /// 0 to 1 while downloading
    Q_PROPERTY(double fraction READ fraction NOTIFY changed)
    /// "54 MB of 539 MB"
    Q_PROPERTY(QString progress READ progress NOTIFY changed)
    /// "10 %" of a download, "Verifying…"; empty otherwise
    Q_PROPERTY(QString progressInBrief READ progressInBrief NOTIFY changed)
    /// "12 MB/s, 40 s left" of a download, once that is known
    Q_PROPERTY(QString pace READ pace NOTIFY changed)
    /// What it took and gave on this machine when it was last used; empty before
    Q_PROPERTY(QString figures READ figures NOTIFY changed)
    /// Why the last download or deletion failed; empty otherwise
    Q_PROPERTY(QString message READ message NOTIFY changed)
    /// Held by the engine now
    Q_PROPERTY(bool loaded READ isLoaded NOTIFY changed)
    /// On its way into the engine
    Q_PROPERTY(bool loading READ isLoading NOTIFY changed)

public:
    enum class State { NotDownloaded, Downloading, Verifying, Ready, Failed };
    Q_ENUM(State)

    /// All of it outlives the entry.
    struct Dependencies {
        AppSettings& settings;
        ModelManager& models;
        const DictationSession& session;
        const ModelFigures& figures;
        const Clock& clock;
    };

    /// `id` names a catalogue entry; an empty one stands for the selected one.
    ModelEntry(const Dependencies& needed, QString id, QObject* parent);

    [[nodiscard]] QString id() const { return model().id; }
    [[nodiscard]] QString name() const { return model().displayName; }
    [[nodiscard]] QString description() const { return model().description(); }
    [[nodiscard]] QString precision() const { return model().precisionLabel(); }
    [[nodiscard]] QString size() const;
    [[nodiscard]] bool isSelected() const;
    [[nodiscard]] bool isRecommended() const { return model().id == WhisperModel::fallback().id; }
    [[nodiscard]] State state() const;
    [[nodiscard]] double fraction() const { return modelState().fraction(); }
    [[nodiscard]] QString progress() const;
    [[nodiscard]] QString progressInBrief() const;
    [[nodiscard]] QString pace() const;
    [[nodiscard]] QString figures() const;
    [[nodiscard]] QString message() const;
    [[nodiscard]] bool isLoaded() const;
    [[nodiscard]] bool isLoading() const;

    /// Starts the download, or takes it up where it broke off.
    Q_INVOKABLE void download();
    Q_INVOKABLE void cancel();
    /// Makes it the selected model.
    Q_INVOKABLE void use();
    /// Deletes the file; a failure is shown as `message`.
    Q_INVOKABLE void remove();

Q_SIGNALS:
    void changed();

private:
    [[nodiscard]] WhisperModel model() const;
    [[nodiscard]] ModelState modelState() const;

    [[nodiscard]] qint64 receivedBytes() const;
    void noteState();

    AppSettings& m_settings;
    ModelManager& m_models;
    const DictationSession& m_session;
    const ModelFigures& m_figures;
    const Clock& m_clock;
    TransferRate m_rate;
    QString m_id;
    QString m_deletionFailure;
};

} // namespace tulvane
