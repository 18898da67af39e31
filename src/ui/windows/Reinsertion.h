#pragma once

#include <base/Scheduler.h>

#include <QString>

#include <chrono>
#include <memory>

namespace tulvane {

class DictationController;

/// Inserts a text of the history into the window that was in front before ours: our windows go out of the
/// way, and once none of them has the keyboard any more the text is delivered as that of a dictation. Main
/// thread; needs a QGuiApplication.
class Reinsertion final {
public:
    /// How often, and how many times, it is looked whether another program has come to the front.
    static constexpr std::chrono::milliseconds pause{120};
    static constexpr int mostLooks = 12;

    /// Both collaborators outlive this object.
    Reinsertion(DictationController& controller, Scheduler& scheduler);

    /// Takes the place of one that still waits.
    void insert(const QString& text);

private:
    void look(const QString& text, int looks);

    DictationController& m_controller;
    Scheduler& m_scheduler;
    std::unique_ptr<Scheduler::Token> m_next;
};

} // namespace tulvane
