#pragma once

#include <settings/StoredEnumeration.h>

#include <QtGlobal>

namespace tulvane {

/// A page of the main window, in the order of the sidebar.
enum class SettingsTab { home, models, history, statistics, settings, about };

template <>
struct StoredCases<SettingsTab> {
    static constexpr std::array cases{
        StoredCase<SettingsTab>{SettingsTab::home, "home", QT_TRANSLATE_NOOP("tulvane", "Home")},
        StoredCase<SettingsTab>{SettingsTab::models, "models", QT_TRANSLATE_NOOP("tulvane", "Models")},
        StoredCase<SettingsTab>{SettingsTab::history, "history", QT_TRANSLATE_NOOP("tulvane", "History")},
        StoredCase<SettingsTab>{SettingsTab::statistics, "statistics",
                                QT_TRANSLATE_NOOP("tulvane", "Statistics")},
        StoredCase<SettingsTab>{SettingsTab::settings, "settings", QT_TRANSLATE_NOOP("tulvane", "Settings")},
        StoredCase<SettingsTab>{SettingsTab::about, "about", QT_TRANSLATE_NOOP("tulvane", "About")},
    };
};

/// The name of the page's symbol.
[[nodiscard]] inline QString symbol(SettingsTab tab)
{
    switch (tab) {
    case SettingsTab::home:
        return QStringLiteral("house.fill");
    case SettingsTab::models:
        return QStringLiteral("waveform");
    case SettingsTab::history:
        return QStringLiteral("clock.arrow.circlepath");
    case SettingsTab::statistics:
        return QStringLiteral("chart.bar.fill");
    case SettingsTab::settings:
        return QStringLiteral("gearshape.fill");
    case SettingsTab::about:
        return QStringLiteral("info.circle");
    }
    Q_UNREACHABLE();
}

} // namespace tulvane
