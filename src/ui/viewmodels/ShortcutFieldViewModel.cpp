#include <hotkeys/FreeCombination.h>
#include <hotkeys/KeyboardShortcuts.h>
#include <hotkeys/ShortcutTexts.h>
#include <ui/viewmodels/ShortcutFieldViewModel.h>

#include <utility>

namespace tulvane {

namespace {

constexpr std::chrono::seconds longestSilence{30};

// The window system reports a held key as going up and down again; both events come at once, but not always
// together.
constexpr std::chrono::milliseconds shortestRelease{50};

/// Whether another combination would do where this one does not.
bool isAboutTheCombination(HotkeyError::Kind kind)
{
    switch (kind) {
    case HotkeyError::Kind::taken:
    case HotkeyError::Kind::noSuchKey:
    case HotkeyError::Kind::outOfRange:
    case HotkeyError::Kind::pastes:
    case HotkeyError::Kind::refused:
    case HotkeyError::Kind::unchosen:
        return true;
    case HotkeyError::Kind::unsupported:
    case HotkeyError::Kind::unreachable:
        return false;
    }
    Q_UNREACHABLE();
}

} // namespace

ShortcutFieldViewModel::ShortcutFieldViewModel(KeyboardShortcuts& shortcuts, KeyboardGrab& keyboard,
                                               Scheduler& scheduler, std::function<void()> signal,
                                               ShortcutRules::MenuItemOf menuItemOf, QObject* parent)
    : QObject(parent),
      m_shortcuts(shortcuts),
      m_keyboard(keyboard),
      m_scheduler(scheduler),
      m_signal(std::move(signal)),
      m_menuItemOf(std::move(menuItemOf)),
      m_recorder(shortcuts, ShortcutName::dictate(), m_menuItemOf)
{
    lookForAlternative();
    connect(&m_shortcuts, &KeyboardShortcuts::registrationsChanged, this, &ShortcutFieldViewModel::note);
    connect(&m_recorder, &ShortcutRecorder::changed, this, &ShortcutFieldViewModel::noteRecorder);
    connect(&m_recorder, &ShortcutRecorder::beep, this, &ShortcutFieldViewModel::beep);
}

void ShortcutFieldViewModel::note()
{
    lookForAlternative();
    Q_EMIT changed();
}

void ShortcutFieldViewModel::noteRecorder()
{
    if (!isBusy()) {
        m_patience.reset();
        m_release.reset();
    }
    Q_EMIT changed();
}

void ShortcutFieldViewModel::lookForAlternative()
{
    const auto error = m_shortcuts.registration(ShortcutName::dictate()).error;
    const bool isWanted = !m_recorder.message().isEmpty() || (error && isAboutTheCombination(error->kind()));
    m_alternative = isWanted ? freeCombination(m_shortcuts.hotkeys(), m_menuItemOf) : std::nullopt;
}

QStringList ShortcutFieldViewModel::caps() const
{
    return m_shortcuts.display(ShortcutName::dictate()).caps;
}

QString ShortcutFieldViewModel::problem() const
{
    const auto error = m_shortcuts.registration(ShortcutName::dictate()).error;
    return error ? error->description() : QString();
}

QString ShortcutFieldViewModel::alternative() const
{
    if (!m_alternative)
        return {};
    return translate("Use %1 instead").arg(m_shortcuts.hotkeys().display(*m_alternative).text());
}

QString ShortcutFieldViewModel::howToRecord()
{
    return shortcutTexts::howToRecord.text();
}

QString ShortcutFieldViewModel::whatIsAccepted()
{
    return shortcutTexts::whatIsAccepted.text();
}

QString ShortcutFieldViewModel::howToClear()
{
    return shortcutTexts::howToClear.text();
}

void ShortcutFieldViewModel::start()
{
    m_isRuleBroken = false;
    m_recorder.start();
    lookForAlternative();
    waitForKey();
}

void ShortcutFieldViewModel::waitForKey()
{
    m_patience = m_scheduler.after(longestSilence, [this] { stop(); });
}

void ShortcutFieldViewModel::stop()
{
    m_isRuleBroken = false;
    m_recorder.stop();
}

void ShortcutFieldViewModel::clear()
{
    m_isRuleBroken = false;
    m_recorder.clear();
}

void ShortcutFieldViewModel::useAlternative()
{
    if (m_alternative)
        m_recorder.choose(KeyCombination(*m_alternative));
}

void ShortcutFieldViewModel::tryAgain()
{
    m_shortcuts.registerAgain();
}

void ShortcutFieldViewModel::beep()
{
    m_isRuleBroken = true;
    m_signal();
    Q_EMIT changed();
}

std::unique_ptr<KeyboardGrab::Hold> ShortcutFieldViewModel::holdKeyboard(QWindow& window) const
{
    return m_keyboard.hold(window);
}

ShortcutFieldViewModel::Answer ShortcutFieldViewModel::keyPressed(const NativeKey& key)
{
    m_isRuleBroken = false;
    if (isBusy())
        waitForKey();
    const auto combination = m_shortcuts.hotkeys().combination(key);
    if (!combination) {
        beep(); // a key that cannot be stored, such as one of a remote control
        return Answer::taken;
    }
    if (m_recorder.awaits(combination->keyCode))
        m_release.reset();
    const QString before = m_recorder.message();
    const auto outcome = m_recorder.keyPressed(*combination);
    if (m_recorder.message() != before)
        lookForAlternative();
    Q_EMIT changed();
    return outcome == ShortcutRecorder::Outcome::passedOn ? Answer::passedOn : Answer::taken;
}

void ShortcutFieldViewModel::keyReleased(const NativeKey& key)
{
    const auto combination = m_shortcuts.hotkeys().combination(key);
    if (!combination)
        return;
    if (isRecording()) {
        m_recorder.keyReleased(combination->keyCode);
        return;
    }
    if (!m_recorder.awaits(combination->keyCode))
        return;
    m_release = m_scheduler.after(shortestRelease,
                                  [this, code = combination->keyCode] { m_recorder.keyReleased(code); });
}

} // namespace tulvane
