#include <dictation/Indicator.h>
#include <models/WhisperModel.h>
#include <settings/AppSettings.h>
#include <ui/viewmodels/SetupViewModel.h>
#include <ui/windows/SettingsSelection.h>

#include <algorithm>

namespace tulvane {

namespace {

SetupStepState stateOf(const SetupItem& item)
{
    return item.isDone        ? SetupStepState::done
           : item.isEssential ? SetupStepState::todo
                              : SetupStepState::optional;
}

} // namespace

SetupViewModel::SetupViewModel(const SetupFacts& facts, AppSettings& settings, Windows& windows,
                               SettingsSelection& selection, QObject* parent)
    : QObject(parent),
      m_facts(facts),
      m_settings(settings),
      m_windows(windows),
      m_selection(selection)
{
    connect(&facts, &SetupFacts::changed, this, &SetupViewModel::changed);
    connect(&settings.hideSetupChecklist, &AnySetting::changed, this,
            &SetupViewModel::checklistHiddenChanged);
}

QList<SetupItem> SetupViewModel::items() const
{
    const SetupMarks marks = m_facts.marks();
    const auto guide = [this] { m_windows.showOnboarding(); };
    const auto page = [this](SettingsTab tab, const QString& control = {}) {
        return [this, tab, control] {
            m_windows.showPage(tab);
            if (!control.isEmpty())
                Q_EMIT m_selection.controlWanted(control);
        };
    };
    return {
        {QStringLiteral("mic"), translate("Allow microphone access"), QStringLiteral("mic.fill"),
         marks.microphone, true, guide},
        {QStringLiteral("ax"), translate("Grant Accessibility so text can be typed for you"),
         QStringLiteral("accessibility"), marks.accessibility, true, guide},
        {QStringLiteral("model"), translate("Download a speech model"), QStringLiteral("waveform"),
         marks.model, true,
         page(SettingsTab::models, QStringLiteral("models.%1.start").arg(m_facts.selectedModel().id))},
        {QStringLiteral("hotkey"), translate("Choose a hotkey"), QStringLiteral("keyboard"), marks.hotkey,
         true, page(SettingsTab::settings, QStringLiteral("hotkey.combination"))},
        {QStringLiteral("first"), translate("Dictate your first sentence"), QStringLiteral("text.cursor"),
         marks.firstDictation, false, page(SettingsTab::home)},
        {QStringLiteral("vocab"), translate("Add names and jargon to your vocabulary"),
         QStringLiteral("character.book.closed.fill"), marks.vocabulary, false,
         page(SettingsTab::settings, QStringLiteral("settings.vocabularyPrompt"))},
        {QStringLiteral("hold"), translate("Try hold-to-talk with a single key"),
         QStringLiteral("hand.tap.fill"), marks.holdToTalk, false,
         page(SettingsTab::settings, QStringLiteral("hotkey.singleKey"))},
    };
}

QVariantList SetupViewModel::itemObjects() const
{
    QVariantList list;
    for (const SetupItem& item : items())
        list.append(QVariantMap{{QStringLiteral("id"), item.id},
                                {QStringLiteral("title"), item.title},
                                {QStringLiteral("symbol"), item.symbol},
                                {QStringLiteral("done"), item.isDone},
                                {QStringLiteral("essential"), item.isEssential},
                                {QStringLiteral("label"), label(stateOf(item))}});
    return list;
}

int SetupViewModel::doneCount() const
{
    const auto list = items();
    return static_cast<int>(std::ranges::count_if(list, &SetupItem::isDone));
}

QString SetupViewModel::progress() const
{
    return translate("%1/%2 steps completed").arg(doneCount()).arg(items().size());
}

int SetupViewModel::missingEssentials() const
{
    const auto list = items();
    return static_cast<int>(
        std::ranges::count_if(list, [](const SetupItem& item) { return item.isEssential && !item.isDone; }));
}

QString SetupViewModel::stepsLeft(int count)
{
    return count == 1 ? translate("1 step left.") : translate("%1 steps left.").arg(count);
}

QString SetupViewModel::missingText() const
{
    const int count = missingEssentials();
    return count == 0 ? QString() : stepsLeft(count);
}

bool SetupViewModel::isChecklistHidden() const
{
    return m_settings.hideSetupChecklist();
}

void SetupViewModel::act(const QString& id) const
{
    const auto list = items();
    const auto found = std::ranges::find(list, id, &SetupItem::id);
    if (found != list.end())
        found->action();
}

void SetupViewModel::hideChecklist()
{
    m_settings.hideSetupChecklist.set(true);
}

void SetupViewModel::finishSetup()
{
    if (isChecklistHidden()) {
        showSetupGuide();
        return;
    }
    m_windows.showPage(SettingsTab::home);
    Q_EMIT checklistWanted();
}

void SetupViewModel::showSetupGuide() const
{
    m_windows.showOnboarding();
}

} // namespace tulvane
