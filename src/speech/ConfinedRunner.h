#pragma once

#include <speech/ModelRunner.h>

#include <QThread>

#include <functional>
#include <memory>

namespace tulvane {

/// A runner that works on a thread of its own, which gives up rights before its first work: what parses files
/// of others there can do little harm. The caller waits for each call.
class ConfinedRunner final : public ModelRunner {
public:
    /// `confine` runs once, first, on the new thread; `inner` works and is destroyed there.
    ConfinedRunner(std::unique_ptr<ModelRunner> inner, const std::function<void()>& confine);
    ConfinedRunner(const ConfinedRunner&) = delete;
    ConfinedRunner& operator=(const ConfinedRunner&) = delete;
    /// Waits for the thread's end.
    ~ConfinedRunner() override;

    [[nodiscard]] Recognizer::Loaded load(const QString& modelFile) override;
    void unload() override;
    [[nodiscard]] Recognizer::Recognised transcribe(const std::vector<float>& samples,
                                                    const TranscriptionOptions& options) override;
    [[nodiscard]] QString loadedModel() const override;

private:
    template <class Work>
    auto onThread(const Work& work) const;

    std::unique_ptr<ModelRunner> m_inner;
    QThread m_thread;
    mutable QObject m_worker; ///< lives on the thread
};

} // namespace tulvane
