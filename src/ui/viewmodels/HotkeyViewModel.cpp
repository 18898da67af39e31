#include <base/Translate.h>
#include <hotkeys/HotkeyController.h>
#include <permissions/PermissionsService.h>
#include <settings/AppSettings.h>
#include <ui/viewmodels/HotkeyViewModel.h>
#include <ui/viewmodels/PermissionsViewModel.h>

namespace tulvane {

HotkeyViewModel::HotkeyViewModel(const UiContext& context, QObject* parent)
    : QObject(parent),
      m_context(context),
      m_field(new ShortcutFieldViewModel(context, this))
{
    compareWatching();
    connect(&context.settings.hotkeyMode, &AnySetting::changed, this, &HotkeyViewModel::modeChanged);
    connect(&context.settings.modifierHotkey, &AnySetting::changed, this, &HotkeyViewModel::singleKeyChanged);
    connect(&context.hotkeys, &HotkeyController::modifierTapStateChanged, this,
            &HotkeyViewModel::singleKeyChanged);
    connect(&context.permissions, &PermissionsService::inputMonitoringChanged, this,
            &HotkeyViewModel::compareWatching);
}

void HotkeyViewModel::compareWatching()
{
    // It is told of once a second, mostly unchanged.
    const std::pair now{m_context.permissions.inputMonitoring(), watchingObstacle()};
    if (std::exchange(m_toldWatching, now) != now)
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
    return rawValue(m_context.settings.hotkeyMode());
}

void HotkeyViewModel::setMode(const QString& mode)
{
    const auto chosen = fromRawValue<HotkeyMode>(mode);
    if (chosen && *chosen != m_context.settings.hotkeyMode())
        m_context.settings.hotkeyMode.set(*chosen);
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
    return rawValue(m_context.settings.modifierHotkey());
}

void HotkeyViewModel::setSingleKey(const QString& key)
{
    const auto chosen = fromRawValue<ModifierHotkey>(key);
    if (!chosen || *chosen == m_context.settings.modifierHotkey())
        return;
    m_context.settings.modifierHotkey.set(*chosen);
    if (*chosen != ModifierHotkey::none && !m_context.permissions.inputMonitoring())
        m_context.permissions.requestInputMonitoring();
}

QString HotkeyViewModel::watching() const
{
    if (m_context.settings.modifierHotkey() == ModifierHotkey::none)
        return QStringLiteral("unneeded");
    return m_context.permissions.inputMonitoring() ? QStringLiteral("granted") : QStringLiteral("missing");
}

QString HotkeyViewModel::watchingObstacle() const
{
    return inWords(m_context.permissions.obstacle(Permission::inputMonitoring));
}

QString HotkeyViewModel::singleKeyProblem() const
{
    // A missing permission has a place and remedies of its own.
    if (watching() != u"granted")
        return {};
    const auto error = m_context.hotkeys.modifierTapState().error;
    return error ? error->description() : QString();
}

void HotkeyViewModel::openInputMonitoringSettings() const
{
    m_context.permissions.openSettings(PermissionsService::inputMonitoringPane);
}

void HotkeyViewModel::resetInputMonitoring() const
{
    // The request comes either way: where there was nothing to forget, asking is all that can help.
    static_cast<void>(m_context.permissions.resetPermission(PermissionsService::Resettable::inputMonitoring));
    m_context.permissions.requestInputMonitoring();
}

} // namespace tulvane
