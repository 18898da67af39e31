#include <base/Clock.h>
#include <base/Translate.h>
#include <settings/AppSettings.h>
#include <stats/SpeakingFigures.h>
#include <stats/StatsFormat.h>
#include <stats/StatsStore.h>
#include <stats/StatsSummary.h>
#include <ui/menubar/MenuBarReport.h>
#include <ui/viewmodels/DictationStatus.h>
#include <ui/viewmodels/HotkeyStatus.h>

namespace tulvane {

MenuBarReport::MenuBarReport(const DictationStatus& status, const HotkeyStatus& hotkey,
                             const AppSettings& settings, StatsStore& stats, const Clock& clock,
                             QObject* parent)
    : QObject(parent),
      m_status(status),
      m_hotkey(hotkey),
      m_settings(settings),
      m_stats(stats),
      m_clock(clock)
{
    connect(&status, &DictationStatus::changed, this, &MenuBarReport::changed);
    connect(&hotkey, &HotkeyStatus::changed, this, &MenuBarReport::changed);
    connect(&stats, &StatsStore::daysChanged, this, &MenuBarReport::changed);
    connect(&settings.typingWordsPerMinute, &AnySetting::changed, this, &MenuBarReport::changed);
}

// Not the indicator's symbols: the icon is always on the screen, and shows no passing notice.
QString MenuBarReport::symbol() const
{
    switch (m_status.phase().kind) {
    case Phase::Kind::idle:
    case Phase::Kind::notice:
        return QStringLiteral("mic");
    case Phase::Kind::error:
        return QStringLiteral("mic.slash");
    case Phase::Kind::recording:
        return QStringLiteral("mic.fill");
    case Phase::Kind::transcribing:
    case Phase::Kind::inserting:
        return QStringLiteral("waveform");
    }
    Q_UNREACHABLE();
}

QString MenuBarReport::statusLine() const
{
    switch (m_status.kind()) {
    case DictationStatus::Kind::Ready:
        // The menu has room for the hotkey only in this line.
        return translate("Ready · %1").arg(m_hotkey.description());
    case DictationStatus::Kind::Error:
        // No colour marks an error here, so a word does.
        return translate("Error: %1").arg(m_status.line());
    case DictationStatus::Kind::Loading:
    case DictationStatus::Kind::Recording:
    case DictationStatus::Kind::Working:
    case DictationStatus::Kind::Setup:
    case DictationStatus::Kind::Notice:
        return m_status.line();
    }
    Q_UNREACHABLE();
}

std::optional<QString> MenuBarReport::todayLine() const
{
    const PeriodTotals today = StatsSummary(m_stats).totals(StatsPeriod::today, m_clock.now());
    if (today.words < 1)
        return std::nullopt;
    const double saved = savedSeconds(today.words, today.speechSeconds, m_settings.typingWordsPerMinute());
    return translate("Today: %1 words · ~%2 saved").arg(formatCount(today.words), formatDuration(saved));
}

void MenuBarReport::refresh()
{
    m_stats.refresh();
}

} // namespace tulvane
