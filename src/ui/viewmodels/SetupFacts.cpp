#include <dictation/DictationSession.h>
#include <dictation/Readiness.h>
#include <hotkeys/KeyboardShortcuts.h>
#include <models/WhisperModel.h>
#include <permissions/PermissionsService.h>
#include <settings/AppSettings.h>
#include <stats/StatsStore.h>
#include <ui/viewmodels/SetupFacts.h>

#include <utility>

namespace tulvane {

SetupFacts::SetupFacts(const Readiness& readiness, const AppSettings& settings,
                       const PermissionsService& permissions, const KeyboardShortcuts& shortcuts,
                       const DictationSession& session, const StatsStore& stats, QObject* parent)
    : QObject(parent),
      m_readiness(readiness),
      m_settings(settings),
      m_permissions(permissions),
      m_shortcuts(shortcuts),
      m_session(session),
      m_stats(stats),
      m_last(marks())
{
    const auto follow = [this](auto& sender, auto... signal) {
        (connect(&sender, signal, this, &SetupFacts::compare), ...);
    };
    follow(readiness, &Readiness::changed);
    follow(permissions, &PermissionsService::accessibilityChanged);
    follow(shortcuts, &KeyboardShortcuts::registrationsChanged);
    follow(session, &DictationSession::historyChanged);
    follow(stats, &StatsStore::daysChanged);
    follow(settings.hotkeyMode, &AnySetting::changed);
    follow(settings.vocabularyPrompt, &AnySetting::changed);
}

WhisperModel SetupFacts::selectedModel() const
{
    return WhisperModel::findOrFallback(m_settings.selectedModelID());
}

bool SetupFacts::isReady() const
{
    return m_readiness.isComplete();
}

SetupMarks SetupFacts::marks() const
{
    const bool hasSingleKey = m_settings.modifierHotkey() != ModifierHotkey::none;
    return {.microphone = m_readiness.hasMicrophone(),
            .accessibility = m_permissions.accessibility(),
            .model = m_readiness.hasModel(),
            .hotkey = m_readiness.hasHotkey(),
            .firstDictation = !m_session.history().isEmpty() || !m_stats.days().isEmpty(),
            .vocabulary = !m_settings.vocabularyPrompt().trimmed().isEmpty(),
            .holdToTalk = hasSingleKey || m_settings.hotkeyMode() != HotkeyMode::toggle};
}

void SetupFacts::compare()
{
    const SetupMarks now = marks();
    if (std::exchange(m_last, now) != now)
        Q_EMIT changed();
}

} // namespace tulvane
