#include <base/Translate.h>
#include <hotkeys/HotkeyController.h>
#include <hotkeys/KeyboardShortcuts.h>
#include <settings/AppSettings.h>
#include <ui/viewmodels/HotkeyStatus.h>

namespace tulvane {

HotkeyStatus::HotkeyStatus(const AppSettings& settings, const KeyboardShortcuts& shortcuts,
                           const HotkeyController& hotkeys, QObject* parent)
    : QObject(parent),
      m_settings(settings),
      m_shortcuts(shortcuts),
      m_hotkeys(hotkeys)
{
    connect(&shortcuts, &KeyboardShortcuts::posted, this, &HotkeyStatus::changed);
    connect(&shortcuts, &KeyboardShortcuts::registrationsChanged, this, &HotkeyStatus::changed);
    connect(&settings.hotkeyMode, &AnySetting::changed, this, &HotkeyStatus::changed);
    connect(&settings.modifierHotkey, &AnySetting::changed, this, &HotkeyStatus::changed);
    connect(&hotkeys, &HotkeyController::modifierTapStateChanged, this, &HotkeyStatus::changed);
}

QString HotkeyStatus::description() const
{
    return m_hotkeys.hotkeyDescription();
}

QString HotkeyStatus::verb() const
{
    return m_settings.hotkeyMode() == HotkeyMode::toggle ? translate("Press") : translate("Hold down");
}

QList<QStringList> HotkeyStatus::caps() const
{
    QList<QStringList> list;
    if (m_shortcuts.getShortcut(ShortcutName::dictate()))
        list.append(m_shortcuts.display(ShortcutName::dictate()).caps);
    if (const ModifierHotkey key = m_settings.modifierHotkey(); key != ModifierHotkey::none)
        list.append({title(key)});
    return list;
}

bool HotkeyStatus::isCombinationBroken() const
{
    return m_shortcuts.registration(ShortcutName::dictate()).error.has_value();
}

bool HotkeyStatus::isOfNoUse() const
{
    const bool hasCombination = m_shortcuts.getShortcut(ShortcutName::dictate()).has_value();
    const bool hasSingleKey = m_settings.modifierHotkey() != ModifierHotkey::none;
    const bool works =
        (hasCombination && !isCombinationBroken()) || (hasSingleKey && !m_hotkeys.modifierTapState().error);
    return (hasCombination || hasSingleKey) && !works;
}

QString HotkeyStatus::broken() const
{
    if (isCombinationBroken())
        return m_shortcuts.display(ShortcutName::dictate()).text();
    if (m_hotkeys.modifierTapState().error)
        return title(m_settings.modifierHotkey());
    return {};
}

QString HotkeyStatus::brokenReason() const
{
    if (const auto error = m_shortcuts.registration(ShortcutName::dictate()).error)
        return error->description();
    const auto error = m_hotkeys.modifierTapState().error;
    return error ? error->description() : QString();
}

} // namespace tulvane
