#pragma once

#include <app/cli/Console.h>
#include <base/Result.h>
#include <models/ModelError.h>
#include <models/WhisperModel.h>

#include <QElapsedTimer>
#include <QObject>
#include <QString>

namespace tulvane {
class ModelManager;
class ModelState;
} // namespace tulvane

namespace tulvane::cli {

/// One line for each model: a mark at the selected one, identifier, state, size, name.
[[nodiscard]] QString modelsTable(const ModelManager& manager, const QString& selected);
/// An array of `id`, `state`, `fraction`, `path`, `selected`, on one line.
[[nodiscard]] QString modelsJson(const ModelManager& manager, const QString& selected);
/// One such object.
[[nodiscard]] QString modelJson(const ModelManager& manager, const WhisperModel& model,
                                const QString& selected);
/// `id`, `file`, `sound`, and `problem` where it is not.
[[nodiscard]] QString verificationJson(const WhisperModel& model, const QString& file,
                                       const Result<void, ModelError>& verified);

/// A line on a terminal that follows a download; nothing where `out` is no terminal. The line ends with this.
class DownloadBar final : public QObject {
    Q_OBJECT

public:
    DownloadBar(Console& console, const ModelManager& manager, const WhisperModel& model, bool quiet);
    Q_DISABLE_COPY_MOVE(DownloadBar)
    ~DownloadBar() override;

    /// The line's text for a state, `elapsedMilliseconds` after the first fraction that was shown.
    [[nodiscard]] static QString line(const ModelState& state, qint64 expectedBytes, double firstFraction,
                                      qint64 elapsedMilliseconds);

private:
    void draw(const ModelState& state);

    Console& m_console;
    qint64 m_expectedBytes;
    double m_firstFraction = -1;
    QElapsedTimer m_time;
    bool m_shown = false;
};

} // namespace tulvane::cli
