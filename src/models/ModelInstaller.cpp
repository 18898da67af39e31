#include <models/ModelInstaller.h>
#include <models/ModelVerification.h>

#include <utility>

namespace tulvane {

struct ModelInstaller::Job {
    WhisperModel model;
    std::unique_ptr<StagedModel> staged;
    std::atomic<bool> stop = false;
    // Held while the file is put in place, so that a deletion comes wholly before or wholly after it.
    std::mutex placing;
    bool abandoned = false;
};

ModelInstaller::ModelInstaller(Done done, QObject* parent) : QObject(parent), m_done(std::move(done))
{
    m_worker.setMaxThreadCount(1);
}

ModelInstaller::~ModelInstaller()
{
    for (const auto& [id, job] : m_jobs)
        job->stop = true;
    m_worker.waitForDone();
}

void ModelInstaller::install(const WhisperModel& model, std::unique_ptr<StagedModel> staged)
{
    auto job = std::make_shared<Job>();
    job->model = model;
    job->staged = std::move(staged);
    m_jobs[model.id] = job;
    m_worker.start([this, job] {
        // None: the program ends, and the next one finds the file as it is.
        if (const auto outcome = run(*job))
            QMetaObject::invokeMethod(
                this, [this, job, outcome = *outcome] { finish(job, outcome); }, Qt::QueuedConnection);
    });
}

std::optional<ModelInstaller::Outcome> ModelInstaller::run(Job& job)
{
    auto result =
        job.stop ? Result<void, ModelError>() : verifyModelFile(job.staged->file(), job.model, job.stop);
    const std::lock_guard lock(job.placing);
    if (job.abandoned) {
        job.staged->discard();
        return Outcome{.abandoned = true, .error = {}};
    }
    if (job.stop)
        return std::nullopt;
    if (result)
        result = job.staged->place();
    if (result)
        return Outcome{};
    job.staged->discard();
    return Outcome{.abandoned = false, .error = result.error()};
}

void ModelInstaller::finish(const std::shared_ptr<Job>& job, const Outcome& outcome)
{
    const auto known = m_jobs.find(job->model.id);
    if (known != m_jobs.end() && known->second == job)
        m_jobs.erase(known);
    bool abandoned = false;
    {
        // A deletion that came after the file was in place has removed it again.
        const std::lock_guard lock(job->placing);
        abandoned = job->abandoned;
    }
    m_done(job->model, abandoned ? Outcome{.abandoned = true, .error = {}} : outcome);
}

void ModelInstaller::abandon(const QString& id)
{
    const auto job = m_jobs.find(id);
    if (job == m_jobs.end())
        return;
    const std::lock_guard lock(job->second->placing);
    job->second->abandoned = true;
    // Only now: a check that is stopped and not abandoned leaves its file for the next start.
    job->second->stop = true;
}

} // namespace tulvane
