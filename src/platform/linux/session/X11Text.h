#pragma once

#include <base/Scheduler.h>
#include <platform/linux/x11/connection/X11Connection.h>
#include <ports/KeyPosting.h>
#include <ports/PasteChord.h>
#include <ports/Pasteboard.h>

#include <QByteArray>

#include <memory>
#include <optional>

namespace tulvane {

/// Everything on an X11 desktop that brings text into other programs, over one connection, so that the server
/// sees what we do in the order in which we do it. Main thread.
class X11Text final {
public:
    /// `display` as in DISPLAY. Null when there is no such server. `scheduler` outlives it.
    [[nodiscard]] static std::unique_ptr<X11Text> open(const QByteArray& display, const PasteRules& rules,
                                                       Scheduler& scheduler);
    X11Text(const X11Text&) = delete;
    X11Text& operator=(const X11Text&) = delete;
    ~X11Text();

    /// For what else a session does over the same connection.
    [[nodiscard]] X11Connection& connection();
    [[nodiscard]] Pasteboards& pasteboards();
    [[nodiscard]] KeyPosting& keys();
    /// The process of the program that has the keyboard focus, where its window names it.
    [[nodiscard]] std::optional<quint32> frontProcess();

private:
    struct Parts;
    explicit X11Text(std::unique_ptr<Parts> parts);

    std::unique_ptr<Parts> m_parts;
};

} // namespace tulvane
