#include <base/Translate.h>
#include <dictation/DictationController.h>
#include <dictation/DictationSession.h>
#include <settings/AppSettings.h>
#include <speech/device/ComputingStatus.h>
#include <ui/viewmodels/HistoryViewModel.h>
#include <ui/viewmodels/HomeNotices.h>
#include <ui/viewmodels/HotkeyStatus.h>

namespace tulvane {

HomeNotices::HomeNotices(const DictationSession& session, DictationController& controller,
                         const AppSettings& settings, const HotkeyStatus& hotkey, HistoryViewModel& recent,
                         const ComputingStatus* computing, QObject* parent)
    : QObject(parent),
      m_session(session),
      m_controller(controller),
      m_settings(settings),
      m_hotkey(hotkey),
      m_recent(recent)
{
    connect(&m_session, &DictationSession::canRetryChanged, this, &HomeNotices::retryChanged);
    connect(&m_controller, &DictationController::phaseChanged, this, &HomeNotices::notePhase);
    connect(&m_controller, &DictationController::lastDeliveryChanged, this, &HomeNotices::noteDelivery);
    connect(&m_settings.insertionMethod, &AnySetting::changed, this, &HomeNotices::textLeftChanged);
    connect(&m_recent, &QAbstractItemModel::dataChanged, this, &HomeNotices::copyLabelChanged);
    connect(&m_recent, &HistoryViewModel::countChanged, this, &HomeNotices::copyLabelChanged);
    connect(&m_hotkey, &HotkeyStatus::changed, this, &HomeNotices::hotkeyChanged);
    connect(&m_settings, &AppSettings::troubled, this, &HomeNotices::settingsTroubleChanged);
    if (computing != nullptr) {
        // A failure may have come before the page was first shown.
        m_hasCardFailed = computing->place().isGivenUp;
        connect(computing, &ComputingStatus::gaveUp, this, [this] { setCardFailed(true); });
    }
    notePhase();
}

void HomeNotices::setCardFailed(bool hasFailed)
{
    m_hasCardFailed = hasFailed;
    Q_EMIT cardFailedChanged();
}

void HomeNotices::hideCardFailed()
{
    setCardFailed(false);
}

void HomeNotices::notePhase()
{
    const Phase& phase = m_controller.phase();
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
    return m_session.canRetry();
}

QString HomeNotices::failure() const
{
    const QString kept = translate("The recording is kept in memory until you make the next one.");
    return m_reason.isEmpty() ? kept : m_reason + u' ' + kept;
}

bool HomeNotices::isTextLeft() const
{
    // A user who has chosen the clipboard knows where the text is.
    return !m_isHidden && m_controller.lastDelivery() == InsertionResult::copiedToClipboard &&
           m_settings.insertionMethod() != InsertionMethod::clipboardOnly;
}

bool HomeNotices::isClipboardLost() const
{
    return !m_isHidden && m_controller.hasLostClipboard();
}

QString HomeNotices::copyLabel() const
{
    return m_recent.data(m_recent.index(0), HistoryViewModel::CopyLabelRole).toString();
}

QString HomeNotices::brokenHotkey() const
{
    const QString name = m_hotkey.broken();
    return name.isEmpty() ? QString() : translate("%1 does not work as the hotkey").arg(name);
}

QString HomeNotices::brokenHotkeyReason() const
{
    return m_hotkey.brokenReason();
}

QString HomeNotices::brokenControl() const
{
    return m_hotkey.isCombinationBroken() ? QStringLiteral("hotkey.combination")
                                          : QStringLiteral("hotkey.singleKey");
}

QString HomeNotices::settingsTrouble() const
{
    const auto& trouble = m_settings.trouble();
    return trouble ? trouble->description() : QString();
}

void HomeNotices::retry()
{
    m_controller.retry(InsertionMethod::clipboardOnly);
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
