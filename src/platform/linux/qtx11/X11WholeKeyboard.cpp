#include <platform/linux/qtx11/QtX11.h>
#include <platform/linux/qtx11/X11WholeKeyboard.h>

#include <QPointer>
#include <QWindow>

namespace tulvane {

namespace {

class Grab final : public WholeKeyboard::Hold {
public:
    explicit Grab(QWindow& window) : m_window(&window) {}
    Grab(const Grab&) = delete;
    Grab& operator=(const Grab&) = delete;
    ~Grab() override
    {
        // A window that has gone took its grab along.
        if (m_window && m_window->handle())
            m_window->setKeyboardGrabEnabled(false);
        // Another program's keys work again by the time that anybody hears of the end.
        qtx11::finish();
    }

private:
    QPointer<QWindow> m_window;
};

} // namespace

std::unique_ptr<WholeKeyboard::Hold> X11WholeKeyboard::hold(QWindow& window)
{
    // Elsewhere the windows' library knows of no such thing, and complains.
    if (qtx11::serverWindow(window) == 0 || !window.setKeyboardGrabEnabled(true))
        return nullptr;
    return std::make_unique<Grab>(window);
}

} // namespace tulvane
