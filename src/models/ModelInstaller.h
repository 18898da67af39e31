#pragma once

#include <models/StagedModel.h>
#include <models/WhisperModel.h>

#include <QObject>
#include <QThreadPool>

#include <atomic>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>

namespace tulvane {

/// Checks arrived model files and puts them in place, on one worker thread, one after the other. Lives on the
/// main thread; destroying it interrupts the check, and the file stays for the next start.
class ModelInstaller final : public QObject {
    Q_OBJECT

public:
    /// How it ended; `abandoned` when the model was deleted meanwhile.
    struct Outcome {
        bool abandoned = false;
        std::optional<ModelError> error;
    };
    /// Called on the main thread, from the event loop.
    using Done = std::function<void(const WhisperModel& model, const Outcome& outcome)>;

    explicit ModelInstaller(Done done, QObject* parent = nullptr);
    Q_DISABLE_COPY_MOVE(ModelInstaller)
    ~ModelInstaller() override;

    void install(const WhisperModel& model, std::unique_ptr<StagedModel> staged);
    /// After this returns, a running installation of the model no longer puts its file in place.
    void abandon(const QString& id);

private:
    struct Job;

    [[nodiscard]] static std::optional<Outcome> run(Job& job);
    void finish(const std::shared_ptr<Job>& job, const Outcome& outcome);

    Done m_done;
    QThreadPool m_worker;
    std::map<QString, std::shared_ptr<Job>> m_jobs;
};

} // namespace tulvane
