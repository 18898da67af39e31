#include <base/Translate.h>
#include <hotkeys/HotkeyController.h>
#include <permissions/PermissionsService.h>
#include <settings/AppSettings.h>
#include <ui/viewmodels/HotkeyViewModel.h>
#include <ui/viewmodels/PermissionsViewModel.h>

namespace tulvane {

HotkeyViewModel::HotkeyViewModel(AppSettings& settings, PermissionsService& permissions,
                                 const HotkeyController& hotkeys, ShortcutFieldViewModel& field,
                                 QObject* parent)
    : QObject(parent),
      m_settings(settings),
      m_permissions(permissions),
      m_hotkeys(hotkeys),
      m_field(field)
{
    compareWatching();
    connect(&settings.hotkeyMode, &AnySetting::changed, this, &HotkeyViewModel::modeChanged);
    connect(&settings.modifierHotkey, &AnySetting::changed, this, &HotkeyViewModel::singleKeyChanged);
    connect(&settings.readsKeyboards, &AnySetting::changed, this, &HotkeyViewModel::singleKeyChanged);
    connect(&hotkeys, &HotkeyController::modifierTapStateChanged, this, &HotkeyViewModel::singleKeyChanged);
    connect(&permissions, &PermissionsService::inputMonitoringChanged, this,
            &HotkeyViewModel::compareWatching);
}

void HotkeyViewModel::compareWatching()
{
    // The service publishes its reading once a second, mostly unchanged.
    const std::pair now{m_permissions.inputMonitoring(), watchingObstacle()};
    if (std::exchange(m_lastWatching, now) != now)
        Q_EMIT singleKeyChanged();
}

QString HotkeyViewModel::explanation(HotkeyMode mode)
{
    switch (mode) {
    case HotkeyMode::toggle:
        return translate("Press once to start listening, press again to stop and insert the text.");
    case HotkeyMode::hold:
        return translate("Listens only while the key is held. A very short tap cancels.");
    case HotkeyMode::hybrid:
        return translate("Hold to talk, or tap briefly to start and tap again to stop.");
    }
    Q_UNREACHABLE();
}

QVariantList HotkeyViewModel::modes()
{
    QVariantList list;
    for (const HotkeyMode mode : allCases<HotkeyMode>())
        list.append(QVariantMap{{QStringLiteral("value"), rawValue(mode)},
                                {QStringLiteral("title"), title(mode)},
                                {QStringLiteral("explanation"), explanation(mode)}});
    return list;
}

QString HotkeyViewModel::mode() const
{
    return rawValue(m_settings.hotkeyMode());
}

void HotkeyViewModel::setMode(const QString& mode)
{
    const auto chosen = fromRawValue<HotkeyMode>(mode);
    if (chosen && *chosen != m_settings.hotkeyMode())
        m_settings.hotkeyMode.set(*chosen);
}

QVariantList HotkeyViewModel::singleKeys()
{
    QVariantList list;
    for (const ModifierHotkey key : allCases<ModifierHotkey>())
        list.append(
            QVariantMap{{QStringLiteral("value"), rawValue(key)}, {QStringLiteral("title"), title(key)}});
    return list;
}

QString HotkeyViewModel::singleKey() const
{
    return rawValue(m_settings.modifierHotkey());
}

void HotkeyViewModel::setSingleKey(const QString& key)
{
    const auto chosen = fromRawValue<ModifierHotkey>(key);
    if (!chosen || *chosen == m_settings.modifierHotkey())
        return;
    m_settings.modifierHotkey.set(*chosen);
    if (*chosen != ModifierHotkey::none && !m_permissions.inputMonitoring())
        m_permissions.requestInputMonitoring();
}

HotkeyViewModel::Watching HotkeyViewModel::watching() const
{
    if (m_settings.modifierHotkey() == ModifierHotkey::none)
        return Watching::Unneeded;
    return m_permissions.inputMonitoring() ? Watching::Granted : Watching::Missing;
}

QString HotkeyViewModel::watchingObstacle() const
{
    return inWords(m_permissions.obstacle(Permission::inputMonitoring));
}

QString HotkeyViewModel::singleKeyProblem() const
{
    // A missing permission has a place and remedies of its own.
    if (watching() != Watching::Granted)
        return {};
    const auto error = m_hotkeys.modifierTapState().error;
    return error ? error->description() : QString();
}

bool HotkeyViewModel::readsEveryKey() const
{
    return m_hotkeys.readsEveryKey();
}

QString HotkeyViewModel::whatReadingMeans()
{
    return translate(
        "This desktop tells programs of no single key. Tulvane can read the keyboard itself: then it sees "
        "every key that you press in any program, passwords too. It looks for the single key alone, and "
        "keeps and sends nothing.");
}

bool HotkeyViewModel::mayRead() const
{
    return m_settings.readsKeyboards();
}

void HotkeyViewModel::setMayRead(bool may)
{
    if (may != m_settings.readsKeyboards())
        m_settings.readsKeyboards.set(may);
}

void HotkeyViewModel::openInputMonitoringSettings() const
{
    m_permissions.openSettings(PermissionsService::inputMonitoringPane);
}

void HotkeyViewModel::resetInputMonitoring() const
{
    // The request comes either way: where there was nothing to forget, asking is all that can help.
    static_cast<void>(m_permissions.resetPermission(PermissionsService::Resettable::inputMonitoring));
    m_permissions.requestInputMonitoring();
}

} // namespace tulvane
