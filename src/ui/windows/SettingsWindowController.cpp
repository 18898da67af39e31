#include <base/Translate.h>
#include <ui/windows/ProgramWindow.h>
#include <ui/windows/SettingsWindowController.h>
#include <ui/windows/WindowFrame.h>

#include <QGuiApplication>
#include <QScreen>

#include <utility>

namespace tulvane {

SettingsWindowController::SettingsWindowController(Dependencies neighbours)
    : m_dependencies(std::move(neighbours))
{
}

SettingsWindowController::~SettingsWindowController()
{
    if (m_frame)
        m_frame->store();
}

void SettingsWindowController::show(SettingsTab page)
{
    m_selection.setTab(page);
    if (!m_window)
        makeWindow();
    bringToFront(*m_window);
}

void SettingsWindowController::makeWindow()
{
    m_window = tulvane::makeWindow(
        m_dependencies.engine(),
        {.name = QStringLiteral("MainView"),
         .title = translate("Tulvane"),
         .smallest = smallest,
         .properties = {{QStringLiteral("models"), QVariant::fromValue(m_dependencies.models())}}});
    m_frame = std::make_unique<WindowFrame>(*m_window, QStringLiteral("MainWindow"), m_dependencies.defaults);
    m_frame->restore(initial, *m_window->screen());
    Q_EMIT windowMade(m_window.get());
}

} // namespace tulvane
