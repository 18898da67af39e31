#pragma once

#include <base/Scheduler.h>
#include <base/async/PendingDelays.h>
#include <platform/linux/wayland/connection/WaylandConnection.h>
#include <platform/linux/wayland/fields/FieldState.h>

#include <input-method-unstable-v2-client.h>

#include <memory>
#include <optional>

namespace tulvane {

/// The seat's input method, for as long as this lives and has not given it back. A seat has one: where the
/// user runs another, ours gets nothing, and the other keeps its place. It takes no key. Main thread.
class InputMethodTurn final {
public:
    /// Null where the compositor has no input methods.
    [[nodiscard]] static std::shared_ptr<InputMethodTurn> take(std::shared_ptr<WaylandConnection> connection);
    InputMethodTurn(const InputMethodTurn&) = delete;
    InputMethodTurn& operator=(const InputMethodTurn&) = delete;
    ~InputMethodTurn();

    /// Whether it was given back, or was never ours.
    [[nodiscard]] bool isOver() const { return m_method == nullptr; }
    /// The field that has the focus, as the compositor says it is now; nothing where none has.
    [[nodiscard]] const std::optional<FieldState>& field() const { return m_field; }
    /// Sends a text to the field. Whether the field takes it shows in its state alone.
    void commit(const QByteArray& text);
    /// Ends the turn, and every wait for it.
    void giveBack();
    /// Resumes at every change of the state.
    [[nodiscard]] PendingDelays& waits() { return m_waits; }

private:
    InputMethodTurn(std::shared_ptr<WaylandConnection> connection, zwp_input_method_manager_v2* manager);

    static const zwp_input_method_v2_listener& listener();
    /// What the compositor has announced is in force.
    void apply();

    std::shared_ptr<WaylandConnection> m_connection;
    zwp_input_method_v2* m_method;
    EventLoopScheduler m_scheduler;
    PendingDelays m_waits{m_scheduler};
    bool m_willBeActive = false;
    FieldState m_coming; ///< announced, and not in force yet
    std::optional<FieldState> m_field;
    std::uint32_t m_states = 0; ///< how many have come into force; the compositor counts with us
};

} // namespace tulvane
