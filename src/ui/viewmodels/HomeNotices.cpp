#include <base/Translate.h>
#include <dictation/DictationController.h>
#include <dictation/DictationSession.h>
#include <hotkeys/HotkeyController.h>
#include <hotkeys/KeyboardShortcuts.h>
#include <settings/AppSettings.h>
#include <ui/viewmodels/HistoryViewModel.h>
#include <ui/viewmodels/HomeNotices.h>

namespace tulvane {

HomeNotices::HomeNotices(const UiContext& context, HistoryViewModel& recent, QObject* parent)
    : QObject(parent),
      m_context(context),
      m_recent(recent)
{
    connect(&m_context.session, &DictationSession::canRetryChanged, this, &HomeNotices::retryChanged);
    connect(&m_context.controller, &DictationController::phaseChanged, this, &HomeNotices::notePhase);
    connect(&m_context.controller, &DictationController::lastDeliveryChanged, this,
            &HomeNotices::noteDelivery);
    connect(&m_context.settings.insertionMethod, &AnySetting::changed, this, &HomeNotices::textLeftChanged);
    connect(&m_recent, &QAbstractItemModel::dataChanged, this, &HomeNotices::copyLabelChanged);
    connect(&m_recent, &HistoryViewModel::countChanged, this, &HomeNotices::copyLabelChanged);
    connect(&m_context.shortcuts, &KeyboardShortcuts::registrationsChanged, this,
            &HomeNotices::hotkeyChanged);
    connect(&m_context.hotkeys, &HotkeyController::modifierTapStateChanged, this,
            &HomeNotices::hotkeyChanged);
    connect(&m_context.settings, &AppSettings::troubled, this, &HomeNotices::settingsTroubleChanged);
    notePhase();
}

void HomeNotices::notePhase()
{
    const Phase& phase = m_context.controller.phase();
    if (phase.kind == Phase::Kind::recording)
        m_reason.clear();
    else if (phase.kind == Phase::Kind::error && canRetry())
        m_reason = phase.text;
    else
        return;
    Q_EMIT retryChanged();
}

void HomeNotices::noteDelivery()
{
    m_isHidden = false;
    Q_EMIT textLeftChanged();
}

bool HomeNotices::canRetry() const
{
    return m_context.session.canRetry();
}

QString HomeNotices::failure() const
{
    const QString kept = translate("The recording is kept in memory until you make the next one.");
    return m_reason.isEmpty() ? kept : m_reason + u' ' + kept;
}

bool HomeNotices::isTextLeft() const
{
    // Who has chosen the clipboard knows where the text is.
    return !m_isHidden && m_context.controller.lastDelivery() == InsertionResult::copiedToClipboard &&
           m_context.settings.insertionMethod() != InsertionMethod::clipboardOnly;
}

QString HomeNotices::copyLabel() const
{
    return m_recent.data(m_recent.index(0), HistoryViewModel::CopyLabelRole).toString();
}

QString HomeNotices::brokenHotkey() const
{
    const QString sentence = translate("%1 does not work as the hotkey");
    if (m_context.shortcuts.registration(ShortcutName::dictate()).error)
        return sentence.arg(m_context.shortcuts.display(ShortcutName::dictate()).text());
    if (m_context.hotkeys.modifierTapState().error)
        return sentence.arg(title(m_context.settings.modifierHotkey()));
    return {};
}

QString HomeNotices::brokenHotkeyReason() const
{
    if (const auto error = m_context.shortcuts.registration(ShortcutName::dictate()).error)
        return error->description();
    const auto error = m_context.hotkeys.modifierTapState().error;
    return error ? error->description() : QString();
}

QString HomeNotices::settingsTrouble() const
{
    const auto& trouble = m_context.settings.trouble();
    return trouble ? trouble->description() : QString();
}

void HomeNotices::retry()
{
    m_context.controller.retry(InsertionMethod::clipboardOnly);
}

void HomeNotices::copyLastText()
{
    m_recent.copy(0);
}

void HomeNotices::hideTextLeft()
{
    m_isHidden = true;
    Q_EMIT textLeftChanged();
}

} // namespace tulvane
