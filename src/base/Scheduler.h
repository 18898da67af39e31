#pragma once

#include <QObject>

#include <chrono>
#include <functional>
#include <memory>

namespace tulvane {

/// Runs something later on the main thread; a collaborator, so that a test can hold time still. Main thread.
class Scheduler {
public:
    /// A pending call. Dropping or cancelling it forgets the call; after the call it does nothing.
    class Token {
    public:
        Token() = default;
        Token(const Token&) = delete;
        Token& operator=(const Token&) = delete;
        virtual ~Token() = default;
    };

    Scheduler() = default;
    Scheduler(const Scheduler&) = delete;
    Scheduler& operator=(const Scheduler&) = delete;
    virtual ~Scheduler() = default;

    /// Calls `work` once, not before `delay` has passed, unless the token is gone by then.
    [[nodiscard]] virtual std::unique_ptr<Token> after(std::chrono::milliseconds delay,
                                                       std::function<void()> work) = 0;
};

/// The event loop's own timers.
class EventLoopScheduler final : public Scheduler {
public:
    [[nodiscard]] std::unique_ptr<Token> after(std::chrono::milliseconds delay,
                                               std::function<void()> work) override;
};

} // namespace tulvane
