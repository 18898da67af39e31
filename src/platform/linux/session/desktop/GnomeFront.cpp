#include <platform/linux/process/ProgramNames.h>
#include <platform/linux/session/desktop/GnomeFront.h>
#include <platform/linux/x11/clipboard/FrontWindow.h>

namespace tulvane {

namespace {

/// Windows of X have smaller numbers.
constexpr quint64 notOfX = quint64{1} << 63;

} // namespace

FrontProgram GnomeFront::current()
{
    // While a window of Wayland has the keyboard, the focus of X is in a window without a class.
    const FrontWindow x11 = FrontWindow::current(m_link);
    if (!x11.classes.isEmpty())
        return {.window = x11.window,
                .classes = x11.classes,
                .process = FrontWindow::process(m_link).value_or(0),
                .isX11 = true};
    const AtspiFront::Window window = m_windows.current();
    if (!window.isKnown())
        return {};
    QStringList names = programNames(window.process);
    if (!window.program.isEmpty())
        names.append(window.program);
    return {.window = qHash(window.place.path, qHash(window.place.service)) | notOfX,
            .classes = names,
            .process = window.process,
            .isX11 = false};
}

} // namespace tulvane
