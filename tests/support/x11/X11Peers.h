#pragma once

#include <base/Scheduler.h>
#include <platform/linux/x11/clipboard/SelectionReader.h>
#include <platform/linux/x11/connection/X11Connection.h>

#include <QHash>
#include <QList>

#include <functional>
#include <memory>
#include <optional>

namespace tulvane::test {

/// A key as a focused window receives it.
struct HeardKey {
    bool down = false;
    int key = 0;   ///< the X key code
    int state = 0; ///< modifiers and group
};

/// Another program on the display: a connection of its own, a window that can have the focus, and a selection
/// that it reads.
class X11Peer final {
public:
    /// `windowClass` is what its WM_CLASS says.
    explicit X11Peer(const QString& display, const QByteArray& windowClass = "peer");

    /// Its window gets the keyboard focus; returns when it has it.
    void takeFocus();
    /// Reads everything that a selection offers.
    [[nodiscard]] SelectionReader::Outcome read(const QString& selection = QStringLiteral("CLIPBOARD"));
    /// Reads one target; none when it is refused.
    [[nodiscard]] std::optional<QByteArray>
    readTarget(const QString& target, const QString& selection = QStringLiteral("CLIPBOARD"));

    [[nodiscard]] X11Connection& link() { return *m_link; }
    [[nodiscard]] xcb_window_t window() const { return m_window; }
    /// The keys that its window has heard of.
    [[nodiscard]] QList<HeardKey> keys() const { return m_keys; }
    void forgetKeys() { m_keys.clear(); }
    /// Takes in everything that has happened until now.
    void catchUp() { m_link->catchUp(); }

private:
    void handle(const xcb_generic_event_t& event);

    std::unique_ptr<X11Connection> m_link;
    EventLoopScheduler m_scheduler;
    xcb_window_t m_window;
    QList<HeardKey> m_keys;
    bool m_visible = false;
    bool m_focused = false;
    std::optional<xcb_atom_t> m_noticed;
    std::unique_ptr<X11Connection::Token> m_listening;
};

/// The owner of a selection, as well-behaved or not as the test wants it.
class ScriptedOwner final {
public:
    struct Target {
        // Made by these, and by the constructor for one that is simply delivered.
        explicit Target(QByteArray data = {}, QString ofType = {}, int unit = 8)
            : bytes(std::move(data)),
              type(std::move(ofType)),
              format(unit)
        {
        }
        [[nodiscard]] static Target refusing();
        [[nodiscard]] static Target silent();
        /// In so many pieces; goes silent after `stopsAfter` of them.
        [[nodiscard]] static Target inPieces(const QByteArray& data, int pieces, int stopsAfter = -1);

        QByteArray bytes;
        QString type; ///< the target's own name where empty
        int format;
        bool refused = false;
        bool ignored = false;
        int pieces = 0;
        int stopsAfter = -1;
    };

    explicit ScriptedOwner(const QString& display, const QString& selection = QStringLiteral("CLIPBOARD"));

    /// Without a list of targets it refuses to name any.
    void offer(const QList<std::pair<QString, Target>>& targets) { m_targets = targets; }
    void refuseList() { m_namesTargets = false; }
    void own();
    /// The same at a time of the server's that is later than this one.
    void ownAfter(xcb_timestamp_t time);
    [[nodiscard]] X11Connection& link() { return *m_link; }
    /// The targets that it was asked for, oldest first.
    [[nodiscard]] QStringList asked() const { return m_asked; }
    /// Called at each request, before it is answered.
    std::function<void(const QString&)> onRequest;

private:
    void handle(const xcb_generic_event_t& event);
    void answer(const xcb_selection_request_event_t& request);
    void write(const xcb_selection_request_event_t& request, const Target& target);
    void notify(const xcb_selection_request_event_t& request, xcb_atom_t property);
    void writeTargets(const xcb_selection_request_event_t& request);
    void sendPiece();

    std::unique_ptr<X11Connection> m_link;
    xcb_window_t m_window;
    xcb_atom_t m_selection;
    bool m_namesTargets = true;
    QList<std::pair<QString, Target>> m_targets;
    QStringList m_asked;
    struct Sending {
        xcb_window_t reader;
        xcb_atom_t property;
        Target target;
        xcb_atom_t type;
        int sent;
    };
    std::optional<Sending> m_sending;
    std::unique_ptr<X11Connection::Token> m_listening;
};

} // namespace tulvane::test
