#include <dictation/DictationController.h>
#include <ui/windows/Reinsertion.h>
#include <ui/windows/VisibleWindows.h>

#include <QGuiApplication>
#include <QWindow>

namespace tulvane {

Reinsertion::Reinsertion(DictationController& controller, Scheduler& scheduler)
    : m_controller(controller),
      m_scheduler(scheduler)
{
}

void Reinsertion::insert(const QString& text)
{
    for (QWindow* const window : visibleWindows())
        window->close();
    look(text, 0);
}

void Reinsertion::look(const QString& text, int looks)
{
    m_next = m_scheduler.after(pause, [this, text, looks] {
        // Even the first look comes after a pause: the desktop has to give the keyboard to another window.
        if (QGuiApplication::focusWindow() == nullptr || looks + 1 >= mostLooks)
            m_controller.insertAgain(text);
        else
            look(text, looks + 1);
    });
}

} // namespace tulvane
