#include <hotkeys/FreeCombination.h>
#include <hotkeys/KeyboardShortcuts.h>
#include <hotkeys/ShortcutTexts.h>
#include <ui/models/ShortcutFieldModel.h>

namespace tulvane {

namespace {

constexpr std::chrono::seconds longestSilence{30};

// The window system tells of a held key as going up and down again; both come at once, but not always
// together.
constexpr std::chrono::milliseconds shortestRelease{50};

/// Whether another combination would do where this one does not.
bool isAboutTheCombination(HotKeyError::Kind kind)
{
    switch (kind) {
    case HotKeyError::Kind::taken:
    case HotKeyError::Kind::noSuchKey:
    case HotKeyError::Kind::outOfRange:
    case HotKeyError::Kind::refused:
        return true;
    case HotKeyError::Kind::unsupported:
    case HotKeyError::Kind::unreachable:
        return false;
    }
    Q_UNREACHABLE();
}

} // namespace

ShortcutFieldModel::ShortcutFieldModel(const UiContext& context, QObject* parent)
    : QObject(parent),
      m_context(context),
      m_recorder(context.shortcuts, ShortcutName::dictate(), context.menuItemOf)
{
    lookForAlternative();
    connect(&m_context.shortcuts, &KeyboardShortcuts::registrationsChanged, this, &ShortcutFieldModel::note);
    connect(&m_recorder, &ShortcutRecorder::changed, this, &ShortcutFieldModel::noteRecorder);
    connect(&m_recorder, &ShortcutRecorder::beep, this, &ShortcutFieldModel::beep);
}

void ShortcutFieldModel::note()
{
    lookForAlternative();
    Q_EMIT changed();
}

void ShortcutFieldModel::noteRecorder()
{
    if (!isBusy()) {
        m_patience.reset();
        m_release.reset();
    }
    Q_EMIT changed();
}

void ShortcutFieldModel::lookForAlternative()
{
    const auto error = m_context.shortcuts.registration(ShortcutName::dictate()).error;
    m_alternative = error && isAboutTheCombination(error->kind())
                        ? freeCombination(m_context.shortcuts.hotKeys(), m_context.menuItemOf)
                        : std::nullopt;
}

QStringList ShortcutFieldModel::caps() const
{
    return m_context.shortcuts.display(ShortcutName::dictate()).caps;
}

QString ShortcutFieldModel::problem() const
{
    const auto error = m_context.shortcuts.registration(ShortcutName::dictate()).error;
    return error ? error->description() : QString();
}

QString ShortcutFieldModel::alternative() const
{
    if (!m_alternative)
        return {};
    return translate("Use %1 instead").arg(m_context.shortcuts.hotKeys().display(*m_alternative).text());
}

QString ShortcutFieldModel::howToRecord()
{
    return shortcutTexts::howToRecord.text();
}

QString ShortcutFieldModel::whatIsAccepted()
{
    return shortcutTexts::whatIsAccepted.text();
}

QString ShortcutFieldModel::howToClear()
{
    return shortcutTexts::howToClear.text();
}

void ShortcutFieldModel::start()
{
    m_isRuleBroken = false;
    m_recorder.start();
    waitForKey();
}

void ShortcutFieldModel::waitForKey()
{
    m_patience = m_context.scheduler.after(longestSilence, [this] { stop(); });
}

void ShortcutFieldModel::stop()
{
    m_isRuleBroken = false;
    m_recorder.stop();
}

void ShortcutFieldModel::clear()
{
    m_isRuleBroken = false;
    m_recorder.clear();
}

void ShortcutFieldModel::useAlternative()
{
    if (!m_alternative)
        return;
    const Shortcut shortcut = Shortcut::fromCombination(*m_alternative);
    m_context.shortcuts.setShortcut(shortcut, ShortcutName::dictate());
}

void ShortcutFieldModel::tryAgain()
{
    m_context.shortcuts.registerAgain();
}

void ShortcutFieldModel::beep()
{
    m_isRuleBroken = true;
    m_context.beep();
    Q_EMIT changed();
}

std::unique_ptr<WholeKeyboard::Hold> ShortcutFieldModel::holdKeyboard(QWindow& window) const
{
    return m_context.keyboard.hold(window);
}

ShortcutFieldModel::Answer ShortcutFieldModel::keyPressed(const NativeKey& key)
{
    m_isRuleBroken = false;
    if (isBusy())
        waitForKey();
    const auto combination = m_context.shortcuts.hotKeys().combination(key);
    if (!combination) {
        beep(); // a key that cannot be stored, such as one of a remote control
        return Answer::taken;
    }
    if (m_recorder.awaits(combination->keyCode))
        m_release.reset();
    const auto outcome = m_recorder.keyPressed(*combination);
    Q_EMIT changed();
    return outcome == ShortcutRecorder::Outcome::passedOn ? Answer::passedOn : Answer::taken;
}

void ShortcutFieldModel::keyReleased(const NativeKey& key)
{
    const auto combination = m_context.shortcuts.hotKeys().combination(key);
    if (!combination)
        return;
    if (isRecording()) {
        m_recorder.keyReleased(combination->keyCode);
        return;
    }
    if (!m_recorder.awaits(combination->keyCode))
        return;
    m_release = m_context.scheduler.after(
        shortestRelease, [this, code = combination->keyCode] { m_recorder.keyReleased(code); });
}

} // namespace tulvane
