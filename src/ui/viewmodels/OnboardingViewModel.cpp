#include <dictation/Indicator.h>
#include <models/ModelManager.h>
#include <permissions/PermissionsService.h>
#include <ports/StatusItem.h>
#include <settings/AppSettings.h>
#include <ui/viewmodels/HotkeyStatus.h>
#include <ui/viewmodels/OnboardingViewModel.h>
#include <ui/viewmodels/SetupViewModel.h>

#include <QRegularExpression>

#include <algorithm>

namespace tulvane {

namespace {

QString uselessHotkey(const QString& name)
{
    return translate("%1 does not work as the hotkey. The step “Hotkey” says why.").arg(name);
}

/// The hotkey comes in last of all: its name may well have a star in it.
QString allSet()
{
    return translate("All set. Focus any text field and press **%1**.");
}

} // namespace

OnboardingViewModel::OnboardingViewModel(const SetupFacts& facts, AppSettings& settings,
                                         PermissionsService& permissions, ModelManager& models,
                                         const HotkeyStatus& hotkey, const StatusItem& statusItem,
                                         Windows& windows, QObject* parent)
    : QObject(parent),
      m_facts(facts),
      m_settings(settings),
      m_permissions(permissions),
      m_models(models),
      m_hotkey(hotkey),
      m_statusItem(statusItem),
      m_windows(windows)
{
    connect(&facts, &SetupFacts::changed, this, &OnboardingViewModel::changed);
    // The footer also names the hotkey, which may change while every mark stays.
    connect(&facts, &SetupFacts::changed, this, &OnboardingViewModel::footerChanged);
    connect(&hotkey, &HotkeyStatus::changed, this, &OnboardingViewModel::footerChanged);
    connect(&hotkey, &HotkeyStatus::changed, this, &OnboardingViewModel::changed);
    connect(&permissions, &PermissionsService::microphoneChanged, this,
            &OnboardingViewModel::microphoneChanged);
}

QList<SetupStep> OnboardingViewModel::steps() const
{
    const SetupMarks marks = m_facts.marks();
    const auto state = [](bool isDone) { return isDone ? SetupStepState::done : SetupStepState::todo; };
    PermissionsService& permissions = m_permissions;
    const auto askForMicrophone = [&permissions] {
        if (permissions.microphone() == MicrophoneAccess::notDetermined)
            permissions.requestMicrophone();
        else
            permissions.openSettings(PermissionsService::microphonePane);
    };
    const auto askForAccessibility = [&permissions] {
        if (permissions.asksForAccessibility())
            permissions.requestAccessibility();
        else
            permissions.openSettings(PermissionsService::accessibilityPane);
    };
    return {
        {1, translate("Microphone"), QStringLiteral("mic.fill"), state(marks.microphone), askForMicrophone},
        {2, translate("Accessibility"), QStringLiteral("accessibility"), state(marks.accessibility),
         askForAccessibility},
        {3, translate("Speech model"), QStringLiteral("waveform"), state(marks.model),
         [this] { m_models.download(m_facts.selectedModel()); }},
        {4, translate("Hotkey"), QStringLiteral("keyboard"), state(marks.hotkey),
         [this] { m_windows.showPage(SettingsTab::settings); }},
    };
}

QVariantList OnboardingViewModel::stepObjects() const
{
    QVariantList list;
    for (const SetupStep& step : steps())
        list.append(QVariantMap{{QStringLiteral("number"), step.number},
                                {QStringLiteral("title"), step.title},
                                {QStringLiteral("symbol"), step.symbol},
                                {QStringLiteral("done"), step.state == SetupStepState::done},
                                {QStringLiteral("label"), label(step.state)}});
    return list;
}

int OnboardingViewModel::doneCount() const
{
    const auto list = steps();
    return static_cast<int>(std::ranges::count(list, SetupStepState::done, &SetupStep::state));
}

QString OnboardingViewModel::progress() const
{
    return translate("%1/%2 completed").arg(doneCount()).arg(steps().size());
}

int OnboardingViewModel::next() const
{
    const auto list = steps();
    const auto left = std::ranges::find(list, SetupStepState::todo, &SetupStep::state);
    if (left != list.end())
        return left->number;
    // One that is chosen counts as done, also where the desktop keeps it for itself.
    return m_hotkey.isOfNoUse() ? static_cast<int>(Step::HotkeyStep) : 0;
}

bool OnboardingViewModel::isAllDone() const
{
    return doneCount() == steps().size();
}

QString OnboardingViewModel::footer() const
{
    if (!isAllDone() || m_hotkey.isOfNoUse())
        return spokenFooter().toHtmlEscaped();
    const QString hotkey = m_hotkey.description().toHtmlEscaped();
    static const QRegularExpression strong(QStringLiteral(R"(\*\*(.*?)\*\*)"));
    return allSet().toHtmlEscaped().replace(strong, QStringLiteral("<b>\\1</b>")).arg(hotkey);
}

QString OnboardingViewModel::spokenFooter() const
{
    if (isAllDone() && m_hotkey.isOfNoUse())
        return uselessHotkey(m_hotkey.broken());
    if (isAllDone())
        return allSet().remove(QStringLiteral("**")).arg(m_hotkey.description());
    return SetupViewModel::stepsLeft(static_cast<int>(steps().size()) - doneCount()) +
           (m_statusItem.isShown()
                ? translate(
                      " You can close this and come back any time from the menu-bar icon › Setup guide.")
                : translate(" You can close this and come back any time from Settings › Setup guide."));
}

QString OnboardingViewModel::hotkey() const
{
    return m_hotkey.isOfNoUse() ? translate("%1 does not work as the hotkey").arg(m_hotkey.broken())
                                : m_hotkey.description();
}

QString OnboardingViewModel::finishLabel() const
{
    return isAllDone() ? translate("Done") : translate("Close");
}

OnboardingViewModel::Microphone OnboardingViewModel::microphone() const
{
    switch (m_permissions.microphone()) {
    case MicrophoneAccess::notDetermined:
        return Microphone::Ask;
    case MicrophoneAccess::restricted:
    case MicrophoneAccess::denied:
        return Microphone::Denied;
    case MicrophoneAccess::authorized:
        return Microphone::Granted;
    }
    Q_UNREACHABLE();
}

void OnboardingViewModel::act(int number) const
{
    const auto list = steps();
    const auto found = std::ranges::find(list, number, &SetupStep::number);
    if (found != list.end())
        found->action();
}

void OnboardingViewModel::finish()
{
    // Without accessibility the text is left on the clipboard, and dictation works.
    if (m_facts.isReady())
        m_settings.hasCompletedOnboarding.set(true);
    Q_EMIT closeWanted();
}

} // namespace tulvane
