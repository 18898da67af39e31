#pragma once

#include <QDateTime>
#include <QMap>
#include <QObject>
#include <QString>
#include <QTimer>

#include <chrono>
#include <functional>
#include <optional>

namespace tulvane {

/// What one model took and gave on this machine when it was last used.
struct ModelUse {
    qint64 bytes = 0; ///< of this process's memory; 0 where it was not measured
    double speed = 0; ///< seconds of speech in a second; 0 before the first dictation
    QDateTime when;   ///< of the last measurement

    [[nodiscard]] bool operator==(const ModelUse&) const = default;
};

/// The measurements of every model, by the name of its file, kept in a file of the cache from one run of the
/// program to the next. Nothing of what was said is in it. What was noted goes to the disk some seconds
/// later, or when this object ends: no load and no text waits for it. Main thread.
class ModelFigures final : public QObject {
    Q_OBJECT

public:
    /// Speech that is shorter says little about the speed.
    static constexpr double shortestSpeech = 2.0;

    /// In the user's cache folder.
    [[nodiscard]] static QString standardFile();

    /// `file` may not exist yet; without a name nothing is kept. `resident` is how much memory this process
    /// holds, in bytes, and 0 where the system does not say.
    ModelFigures(QString file, std::function<qint64()> resident, QObject* parent = nullptr);
    Q_DISABLE_COPY_MOVE(ModelFigures)
    ~ModelFigures() override;

    /// Nothing for a model that was not used here.
    [[nodiscard]] std::optional<ModelUse> of(const QString& modelFile) const;

    /// A model is about to be loaded in the place of `previous`, whose memory goes; empty without one.
    void noteLoading(const QString& previous);
    void noteLoaded(const QString& modelFile, const QDateTime& now);
    void noteDictation(const QString& modelFile, double speechSeconds, std::chrono::nanoseconds work,
                       const QDateTime& now);

Q_SIGNALS:
    void changed();

private:
    [[nodiscard]] static QString nameOf(const QString& modelFile);
    void read();
    void noteChange();
    void store();

    QString m_file;
    std::function<qint64()> m_resident;
    qint64 m_before = 0; ///< this process's memory without any model
    QMap<QString, ModelUse> m_uses;
    QTimer m_storing; ///< runs while something is to be stored
};

} // namespace tulvane
