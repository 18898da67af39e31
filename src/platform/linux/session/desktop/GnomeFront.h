#pragma once

#include <platform/linux/atspi/AtspiFront.h>
#include <platform/linux/front/FrontProgram.h>
#include <platform/linux/x11/connection/X11Connection.h>

namespace tulvane {

/// The program in front on GNOME, which tells no program: the X server knows its own clients' windows, and
/// the others tell the accessibility bus. Of those that do neither nothing is known. Main thread.
class GnomeFront final : public FrontPrograms {
public:
    /// `link` outlives it. `sessionBusAddress` as for AtspiFocusedElements.
    GnomeFront(X11Connection& link, const QString& sessionBusAddress)
        : m_link(link),
          m_windows(sessionBusAddress)
    {
    }

    [[nodiscard]] FrontProgram current() override;

private:
    X11Connection& m_link;
    AtspiFront m_windows;
};

} // namespace tulvane
