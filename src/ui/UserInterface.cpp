#include <dictation/DictationSession.h>
#include <settings/AppSettings.h>
#include <stats/StatsStore.h>
#include <ui/UserInterface.h>
#include <ui/indicator/HUDController.h>
#include <ui/indicator/PhaseAnnouncer.h>
#include <ui/look/Look.h>
#include <ui/menubar/MenuBarCommands.h>
#include <ui/menubar/MenuBarMenu.h>
#include <ui/menubar/MenuBarReport.h>
#include <ui/viewmodels/ViewModels.h>
#include <ui/windows/OnboardingWindowController.h>
#include <ui/windows/SettingsWindowController.h>

#include <QGuiApplication>
#include <QQmlEngine>
#include <QWindow>

#include <utility>

// Written by the build. A module in a static library has to be registered by its program.
extern void qml_register_types_Tulvane();

namespace tulvane {

struct UserInterface::MenuBar {
    MenuBar(const UiContext& context, ViewModels& models, Windows& windows, StatusItem& item,
            std::function<void()> quit)
        : report(models.status(), models.hotkeyStatus(), context.settings, context.stats, context.clock),
          commands(context.controller, context.session, context.settings, context.pasteboards, windows,
                   std::move(quit)),
          menu(item, report, commands)
    {
    }

    MenuBarReport report;
    MenuBarCommands commands;
    MenuBarMenu menu;
};

UserInterface::UserInterface(const Ground& ground)
    : m_indicator(std::make_unique<HUDController>(
          HUDController::Dependencies{.engine = [this]() -> QQmlEngine& { return engine(); },
                                      .makePanel = ground.makePanel,
                                      .scheduler = ground.scheduler,
                                      .clock = ground.clock}))
{
}

UserInterface::~UserInterface() = default;

void UserInterface::attach(const UiContext& context)
{
    m_context.emplace(context);
    Look::shared().follow(context.presentation);
    m_settingsWindow = std::make_unique<SettingsWindowController>(
        SettingsWindowController::Dependencies{.engine = [this]() -> QQmlEngine& { return engine(); },
                                               .models = [this] { return m_models.get(); },
                                               .defaults = context.settings.defaults()});
    m_onboardingWindow = std::make_unique<OnboardingWindowController>(
        OnboardingWindowController::Dependencies{.engine = [this]() -> QQmlEngine& { return engine(); },
                                                 .models = [this]() -> ViewModels& { return *m_models; },
                                                 .defaults = context.settings.defaults()});
    m_models = std::make_unique<ViewModels>(context, *this, m_settingsWindow->selection());
    m_indicator->setLongestRecording([&session = context.session] { return session.longestRecording(); });
    m_announcer =
        std::make_unique<PhaseAnnouncer>(context.controller, m_indicator->model(), context.announce);
    // The command line may have counted dictations while the user was elsewhere.
    m_arrivals = QObject::connect(qGuiApp, &QGuiApplication::focusWindowChanged, qGuiApp,
                                  [&stats = context.stats](const QWindow* window) {
                                      if (window)
                                          stats.refresh();
                                  });
}

void UserInterface::showStatusItem(StatusItem& item, std::function<void()> quit)
{
    m_menuBar = std::make_unique<MenuBar>(*m_context, *m_models, *this, item, std::move(quit));
}

void UserInterface::detach()
{
    m_menuBar.reset();
    m_announcer.reset();
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
