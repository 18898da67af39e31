#include <base/Translate.h>
#include <ui/viewmodels/ViewModels.h>
#include <ui/windows/OnboardingWindowController.h>
#include <ui/windows/ProgramWindow.h>
#include <ui/windows/WindowFrame.h>

#include <QScreen>

#include <utility>

namespace tulvane {

OnboardingWindowController::OnboardingWindowController(Dependencies neighbours)
    : m_dependencies(std::move(neighbours))
{
}

OnboardingWindowController::~OnboardingWindowController()
{
    if (!m_window)
        return;
    m_window->disconnect(this);
    followVisibility(false);
    m_frame->store();
}

void OnboardingWindowController::show()
{
    if (!m_window)
        makeWindow();
    bringToFront(*m_window);
}

void OnboardingWindowController::close()
{
    if (m_window)
        m_window->hide();
}

void OnboardingWindowController::makeWindow()
{
    ViewModels& models = m_dependencies.models();
    m_window = tulvane::makeWindow(
        m_dependencies.engine(), {.name = QStringLiteral("OnboardingView"),
                                  .title = translate("Set up Tulvane"),
                                  .smallest = QSize(initial.width(), lowest),
                                  .properties = {{QStringLiteral("models"), QVariant::fromValue(&models)}}});
    m_window->setMaximumWidth(initial.width());
    m_frame =
        std::make_unique<WindowFrame>(*m_window, QStringLiteral("SetupWindow"), m_dependencies.defaults);
    m_frame->restore(initial, *m_window->screen());
    connect(models.onboarding(), &OnboardingViewModel::closeWanted, this, &OnboardingWindowController::close);
    connect(m_window.get(), &QWindow::visibleChanged, this, &OnboardingWindowController::followVisibility);
}

void OnboardingWindowController::followVisibility(bool isVisible)
{
    if (std::exchange(m_isWatching, isVisible) == isVisible)
        return;
    PermissionWatch& watch = *m_dependencies.models().watch();
    if (isVisible)
        watch.hold();
    else
        watch.release();
}

} // namespace tulvane
