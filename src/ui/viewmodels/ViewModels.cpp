#include <dictation/DictationController.h>
#include <dictation/DictationSession.h>
#include <hotkeys/KeyboardShortcuts.h>
#include <ui/viewmodels/ViewModels.h>
#include <ui/windows/Reinsertion.h>
#include <ui/windows/WindowKeys.h>

namespace tulvane {

ViewModels::ViewModels(const UiContext& context, Windows& windows, SettingsSelection& selection)
    : m_context(context),
      m_windows(windows),
      m_selection(selection)
{
}

ViewModels::~ViewModels() = default;

DictationStatus& ViewModels::status()
{
    return *made(m_status, m_context.controller, m_context.session);
}

HotkeyStatus& ViewModels::hotkeyStatus()
{
    return *made(m_hotkeyStatus, m_context.settings, m_context.shortcuts, m_context.hotkeys);
}

SetupFacts& ViewModels::facts()
{
    return *made(m_facts, m_context.controller.readiness(), m_context.settings, m_context.permissions,
                 m_context.shortcuts, m_context.session, m_context.stats);
}

MainViewModel* ViewModels::main()
{
    return made(m_main, m_selection, m_context.version);
}

WindowCommands* ViewModels::commands()
{
    return made(m_commands, m_selection, m_windows, m_context.quit);
}

SetupViewModel* ViewModels::setup()
{
    return made(m_setup, facts(), m_context.settings, m_windows, m_selection);
}

OnboardingViewModel* ViewModels::onboarding()
{
    return made(m_onboarding, facts(), m_context.settings, m_context.permissions, m_context.models,
                hotkeyStatus(), m_context.statusItem, m_windows);
}

DemonstrationViewModel* ViewModels::demonstration()
{
    return made(m_demonstration, m_context.demonstration);
}

TryOutViewModel* ViewModels::tryOut()
{
    return made(m_tryOut, facts(), m_context.settings, hotkeyStatus(), m_context.controller,
                m_context.session);
}

MicrophoneViewModel* ViewModels::microphone()
{
    return made(m_microphone, m_context.microphoneTest, m_context.recorder, m_context.controller,
                m_context.permissions);
}

ShortcutFieldViewModel& ViewModels::field()
{
    return *made(m_field, m_context.shortcuts, m_context.keyboard, m_context.scheduler, m_context.beep,
                 windowKeyTitles(m_context.shortcuts.hotkeys()));
}

HotkeyViewModel* ViewModels::hotkey()
{
    return made(m_hotkey, m_context.settings, m_context.permissions, m_context.hotkeys, field());
}

PermissionWatch* ViewModels::watch()
{
    return made(m_watch, m_context.permissions);
}

HistoryViewModel& ViewModels::recent()
{
    return *made(m_recent, m_context.session, m_context.stats, m_context.clock, m_context.pasteboards,
                 m_context.scheduler, HomeViewModel::mostRecent);
}

HomeViewModel* ViewModels::home()
{
    return made(m_home, status(), hotkeyStatus(), m_context.settings, m_context.stats, m_context.clock,
                recent());
}

HomeNotices* ViewModels::notices()
{
    return made(m_notices, m_context.session, m_context.controller, m_context.settings, hotkeyStatus(),
                recent(), m_context.computing);
}

HistoryViewModel* ViewModels::history()
{
    if (!m_history) {
        made(m_history, m_context.session, m_context.stats, m_context.clock, m_context.pasteboards,
             m_context.scheduler, DictationSession::mostEntries);
        m_reinsertion = std::make_unique<Reinsertion>(m_context.controller, m_context.scheduler);
        connect(m_history, &HistoryViewModel::insertWanted, this,
                [this](const QString& text) { m_reinsertion->insert(text); });
    }
    return m_history;
}

StatisticsViewModel* ViewModels::statistics()
{
    return made(m_statistics, m_context.settings, m_context.stats, m_context.clock);
}

ModelEntry* ViewModels::entryOf(const QString& id)
{
    return new ModelEntry(
        {m_context.settings, m_context.models, m_context.session, m_context.figures, m_context.clock}, id,
        this);
}

ModelGallery* ViewModels::gallery()
{
    if (!m_gallery) {
        QList<ModelEntry*> entries;
        for (const WhisperModel& model : WhisperModel::gallery())
            entries.append(entryOf(model.id));
        m_gallery = new ModelGallery(m_context.models, m_context.workspace, m_context.computing, entries,
                                     *selectedModel(), this);
    }
    return m_gallery;
}

ModelEntry* ViewModels::selectedModel()
{
    if (!m_selectedModel)
        m_selectedModel = entryOf({});
    return m_selectedModel;
}

PreferencesViewModel* ViewModels::preferences()
{
    return made(m_preferences, m_context.settings, m_context.loginItem, m_context.statusItem, m_windows,
                m_context.relaunch, m_context.quit);
}

PermissionsViewModel* ViewModels::permissions()
{
    return made(m_permissions, m_context.permissions);
}

} // namespace tulvane
