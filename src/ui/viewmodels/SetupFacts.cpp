#include <dictation/DictationSession.h>
#include <hotkeys/KeyboardShortcuts.h>
#include <models/ModelManager.h>
#include <permissions/PermissionsService.h>
#include <settings/AppSettings.h>
#include <stats/StatsStore.h>
#include <ui/viewmodels/SetupFacts.h>

#include <utility>

namespace tulvane {

SetupFacts::SetupFacts(const UiContext& context, QObject* parent)
    : QObject(parent),
      m_context(context),
      m_told(marks())
{
    const auto follow = [this](auto& sender, auto... signal) {
        (connect(&sender, signal, this, &SetupFacts::compare), ...);
    };
    follow(context.permissions, &PermissionsService::microphoneChanged,
           &PermissionsService::accessibilityChanged);
    follow(context.models, &ModelManager::stateChanged);
    follow(context.shortcuts, &KeyboardShortcuts::registrationsChanged);
    follow(context.session, &DictationSession::historyChanged);
    follow(context.stats, &StatsStore::daysChanged);
    follow(context.settings.selectedModelID, &AnySetting::changed);
    follow(context.settings.modifierHotkey, &AnySetting::changed);
    follow(context.settings.hotkeyMode, &AnySetting::changed);
    follow(context.settings.vocabularyPrompt, &AnySetting::changed);
}

WhisperModel SetupFacts::selectedModel() const
{
    return WhisperModel::find(m_context.settings.selectedModelID()).value_or(WhisperModel::fallback());
}

SetupMarks SetupFacts::marks() const
{
    const AppSettings& settings = m_context.settings;
    const bool hasSingleKey = settings.modifierHotkey() != ModifierHotkey::none;
    return {.microphone = m_context.permissions.microphone() == MicrophoneAccess::authorized,
            .accessibility = m_context.permissions.accessibility(),
            .model = m_context.models.isDownloaded(selectedModel()),
            .hotkey = hasSingleKey || m_context.shortcuts.getShortcut(ShortcutName::dictate()).has_value(),
            .firstDictation = !m_context.session.history().isEmpty() || !m_context.stats.days().isEmpty(),
            .vocabulary = !settings.vocabularyPrompt().trimmed().isEmpty(),
            .holdToTalk = hasSingleKey || settings.hotkeyMode() != HotkeyMode::toggle};
}

void SetupFacts::compare()
{
    const SetupMarks now = marks();
    if (std::exchange(m_told, now) != now)
        Q_EMIT changed();
}

} // namespace tulvane
