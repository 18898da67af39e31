#include <hotkeys/KeyboardShortcuts.h>
#include <hotkeys/ShortcutRecorder.h>
#include <hotkeys/ShortcutTexts.h>
#include <ports/VirtualKeys.h>

#include <utility>

namespace tulvane {

ShortcutRecorder::ShortcutRecorder(KeyboardShortcuts& shortcuts, const ShortcutName& name,
                                   const ShortcutRules::MenuItemOf& menuItemOf, QObject* parent)
    : QObject(parent),
      m_shortcuts(shortcuts),
      m_name(name),
      m_rules(shortcuts.hotkeys(), menuItemOf)
{
    connect(&m_shortcuts, &KeyboardShortcuts::registrationsChanged, this, &ShortcutRecorder::changed);
}

ShortcutRecorder::~ShortcutRecorder()
{
    // A window that closes in the middle of recording must not leave the hotkey switched off.
    if (isBusy())
        m_shortcuts.setRecorderActive(false);
}

QString ShortcutRecorder::text() const
{
    return m_shortcuts.display(m_name).text();
}

QString ShortcutRecorder::placeholder() const
{
    return (m_isActive ? shortcutTexts::pressShortcut : shortcutTexts::recordShortcut).text();
}

void ShortcutRecorder::start()
{
    if (m_isActive)
        return;
    m_isActive = true;
    m_heldKey.reset();
    m_onlyModifiers = false;
    m_message.clear();
    m_shortcuts.setRecorderActive(true);
    Q_EMIT changed();
}

void ShortcutRecorder::stop()
{
    if (!isBusy())
        return;
    m_isActive = false;
    m_heldKey.reset();
    m_shortcuts.setRecorderActive(false);
    Q_EMIT changed();
}

ShortcutRecorder::Outcome ShortcutRecorder::keyPressed(const KeyCombination& combination)
{
    if (!m_isActive)
        return Outcome::ignored;
    if (virtualKeys::isModifier(combination.keyCode)) {
        m_onlyModifiers = true;
        return Outcome::ignored;
    }
    m_onlyModifiers = false;
    if (combination.modifiers == 0) {
        if (const auto outcome = handlePlainKey(combination.keyCode))
            return *outcome;
    }
    return record(combination);
}

std::optional<ShortcutRecorder::Outcome> ShortcutRecorder::handlePlainKey(quint32 keyCode)
{
    switch (keyCode) {
    case virtualKeys::backspace:
    case virtualKeys::forwardDelete:
        clear();
        stop();
        return Outcome::cleared;
    case virtualKeys::escape:
        stop();
        return Outcome::cancelled;
    case virtualKeys::tab:
        stop();
        return Outcome::passedOn;
    default:
        return std::nullopt;
    }
}

ShortcutRecorder::Outcome ShortcutRecorder::record(const KeyCombination& combination)
{
    const ShortcutRules::Answer answer = m_rules.judge(combination);
    m_message = answer.message;
    Q_EMIT changed();
    switch (answer.verdict) {
    case ShortcutRules::Verdict::notACombination:
        Q_EMIT beep();
        return Outcome::beeped;
    case ShortcutRules::Verdict::refused:
        return Outcome::refused;
    case ShortcutRules::Verdict::accepted:
        m_isActive = false;
        m_heldKey = combination.keyCode;
        m_shortcuts.setShortcut(Shortcut::fromCombination(combination), m_name);
        Q_EMIT changed();
        return Outcome::accepted;
    }
    Q_UNREACHABLE();
}

ShortcutRecorder::Outcome ShortcutRecorder::keyReleased(quint32 keyCode)
{
    if (m_heldKey == keyCode) {
        stop();
        return Outcome::ignored;
    }
    // A modifier that came and went by itself is no combination; one that still may become one is waited for.
    if (!m_isActive || !virtualKeys::isModifier(keyCode) || !std::exchange(m_onlyModifiers, false))
        return Outcome::ignored;
    Q_EMIT beep();
    return Outcome::beeped;
}

void ShortcutRecorder::clear()
{
    m_message.clear();
    m_shortcuts.setShortcut(std::nullopt, m_name);
}

void ShortcutRecorder::choose(const KeyCombination& combination)
{
    m_message.clear();
    m_shortcuts.setShortcut(Shortcut::fromCombination(combination), m_name);
    stop();
    Q_EMIT changed();
}

} // namespace tulvane
