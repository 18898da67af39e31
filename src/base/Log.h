#pragma once

#include <QLoggingCategory>

namespace tulvane {

/// The log's subsystem, and the prefix of every category's name.
inline constexpr auto logSubsystem = "com.dunio.Tulvane";

// One category per area; milestones are logged with qCInfo, failures with qCCritical ("error level").
// Log lines are English in every interface language and never hold dictated text.
Q_DECLARE_LOGGING_CATEGORY(lcApp)
Q_DECLARE_LOGGING_CATEGORY(lcAudio)
Q_DECLARE_LOGGING_CATEGORY(lcWhisper)
Q_DECLARE_LOGGING_CATEGORY(lcModels)
Q_DECLARE_LOGGING_CATEGORY(lcHotkey)
Q_DECLARE_LOGGING_CATEGORY(lcInsertion)
Q_DECLARE_LOGGING_CATEGORY(lcSettings)

} // namespace tulvane
