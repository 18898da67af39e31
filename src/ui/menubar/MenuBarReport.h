#pragma once

#include <QObject>
#include <QString>

#include <optional>

namespace tulvane {

class AppSettings;
class Clock;
class DictationStatus;
class HotkeyStatus;
class StatsStore;

/// What the status item reports: its icon, how dictating stands, and the day's tally. Main thread.
class MenuBarReport final : public QObject {
    Q_OBJECT

public:
    /// All collaborators outlive this object.
    MenuBarReport(const DictationStatus& status, const HotkeyStatus& hotkey, const AppSettings& settings,
                  StatsStore& stats, const Clock& clock, QObject* parent = nullptr);

    /// The name of the icon's symbol.
    [[nodiscard]] QString symbol() const;
    /// How dictating stands, in words.
    [[nodiscard]] QString statusLine() const;
    /// What dictating has brought today; none on a day without words.
    [[nodiscard]] std::optional<QString> todayLine() const;

    /// Reads the statistics again: the date changes without a signal, and the command line counts on its own.
    void refresh();

Q_SIGNALS:
    void changed();

private:
    const DictationStatus& m_status;
    const HotkeyStatus& m_hotkey;
    const AppSettings& m_settings;
    StatsStore& m_stats;
    const Clock& m_clock;
};

} // namespace tulvane
