#pragma once

#include <base/async/Lifetime.h>
#include <base/async/PendingDelays.h>
#include <settings/AppLanguage.h>
#include <speech/Recognizer.h>

#include <QCoroTask>
#include <QObject>

namespace tulvane {

class AppSettings;
class Sounds;

/// Shows a new user a whole dictation before any model is downloaded: a recorded synthetic voice says a
/// sentence in the interface's language, and the bundled demo model, through the recogniser and the cleanup
/// of every dictation, writes it. The text comes when the voice has ended. Main thread.
class Demonstration final : public QObject {
    Q_OBJECT

public:
    enum class State { idle, running, done, failed };

    struct Dependencies {
        const AppSettings& settings;
        Recognizer& engine;
        Sounds& sounds;
        Scheduler& scheduler;
        QString modelFile; ///< the demo model's
        /// What the voice says; null where it cannot be read.
        std::function<Recognizer::Samples(AppLanguage)> speech;
        int threadCount = 1;
    };

    /// Everything that it needs outlives it.
    explicit Demonstration(const Dependencies& needed, QObject* parent = nullptr);
    Q_DISABLE_COPY_MOVE(Demonstration)
    ~Demonstration() override;

    [[nodiscard]] State state() const { return m_state; }
    /// What was written; empty but in `done`.
    [[nodiscard]] const QString& text() const { return m_text; }
    /// Why nothing was, for the user; empty but in `failed`.
    [[nodiscard]] const QString& failure() const { return m_failure; }

    /// Begins, from every state but `running`. Loads the demo model in the place of any other, so it is
    /// offered only where none is installed.
    void start();

Q_SIGNALS:
    void changed();

private:
    QCoro::Task<> run(Recognizer::Samples speech);
    /// The text, or why there is none.
    QCoro::Task<Result<QString, QString>> recognise(Recognizer::Samples speech);
    void set(State state, const QString& text, const QString& failure);

    const Dependencies m_needed;
    PendingDelays m_delays;
    Lifetime m_lifetime;
    State m_state = State::idle;
    QString m_text;
    QString m_failure;
};

} // namespace tulvane
