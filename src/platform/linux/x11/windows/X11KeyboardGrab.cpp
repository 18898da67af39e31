#include <platform/linux/x11/windows/QtX11.h>
#include <platform/linux/x11/windows/X11KeyboardGrab.h>

#include <QPointer>
#include <QWindow>

namespace tulvane {

namespace {

class Grab final : public KeyboardGrab::Hold {
public:
    explicit Grab(QWindow& window) : m_window(&window) {}
    Grab(const Grab&) = delete;
    Grab& operator=(const Grab&) = delete;
    ~Grab() override
    {
        // A window that has gone took its grab along.
        if (m_window && m_window->handle())
            m_window->setKeyboardGrabEnabled(false);
        // Another program's keys work again by the time that the handler receives the end.
        qtx11::finish();
    }

private:
    QPointer<QWindow> m_window;
};

} // namespace

std::unique_ptr<KeyboardGrab::Hold> X11KeyboardGrab::hold(QWindow& window)
{
    // Elsewhere the windows' library knows of no such thing, and complains.
    if (qtx11::serverWindow(window) == 0 || !window.setKeyboardGrabEnabled(true))
        return nullptr;
    return std::make_unique<Grab>(window);
}

} // namespace tulvane
