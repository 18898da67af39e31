#include <settings/AppSettings.h>
#include <stats/StatsStore.h>
#include <ui/UserInterface.h>
#include <ui/indicator/HUDController.h>
#include <ui/look/Look.h>
#include <ui/viewmodels/ViewModels.h>
#include <ui/windows/OnboardingWindowController.h>
#include <ui/windows/SettingsWindowController.h>

#include <QGuiApplication>
#include <QQmlEngine>
#include <QWindow>

// Written by the build. The module lives in a static library, so nobody but us calls it.
extern void qml_register_types_Tulvane();

namespace tulvane {

UserInterface::UserInterface(const Ground& ground)
    : m_indicator(std::make_unique<HUDController>(
          HUDController::Dependencies{.engine = [this]() -> QQmlEngine& { return engine(); },
                                    .makePanel = ground.makePanel,
                                    .scheduler = ground.scheduler,
                                    .clock = ground.clock}))
{
}

UserInterface::~UserInterface() = default;

void UserInterface::attach(const UiContext& given)
{
    UiContext context = given;
    context.windows = this;
    Look::shared().follow(context.presentation);
    m_settingsWindow = std::make_unique<SettingsWindowController>(
        SettingsWindowController::Dependencies{.engine = [this]() -> QQmlEngine& { return engine(); },
                                             .models = [this] { return m_models.get(); },
                                             .defaults = context.settings.defaults()});
    m_onboardingWindow = std::make_unique<OnboardingWindowController>(
        OnboardingWindowController::Dependencies{.engine = [this]() -> QQmlEngine& { return engine(); },
                                               .models = [this]() -> ViewModels& { return *m_models; },
                                               .defaults = context.settings.defaults()});
    m_models = std::make_unique<ViewModels>(context, m_settingsWindow->selection());
    // The command line may have counted dictations while the user was elsewhere.
    m_arrivals = QObject::connect(qGuiApp, &QGuiApplication::focusWindowChanged, qGuiApp,
                                  [&stats = context.stats](const QWindow* window) {
                                      if (window)
                                          stats.refresh();
                                  });
}

void UserInterface::detach()
{
    QObject::disconnect(m_arrivals);
    m_onboardingWindow.reset();
    m_indicator->close();
    m_settingsWindow.reset();
    m_models.reset();
    m_engine.reset();
}

QQmlEngine& UserInterface::engine()
{
    if (!m_engine) {
        qml_register_types_Tulvane();
        m_engine = std::make_unique<QQmlEngine>();
        m_engine->addImportPath(QStringLiteral(":/"));
    }
    return *m_engine;
}

void UserInterface::showOnboarding()
{
    m_onboardingWindow->show();
}

void UserInterface::showPage(SettingsTab page)
{
    m_settingsWindow->show(page);
}

} // namespace tulvane
