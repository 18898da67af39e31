#pragma once

#include <QString>
#include <QUrl>

namespace tulvane {

/// The base address of the model hub: the first usable one of the given texts (the environment's, the stored
/// setting's), else the public hub. Usable is an http or https address with a host; a slash at the end is
/// added where it is missing. A text that is given and not usable is logged and passed over.
[[nodiscard]] QUrl modelHubURL(const QString& fromEnvironment, const QString& fromSettings);

/// The variable of the environment and the key in the settings' domain that name the hub.
inline constexpr auto modelHubVariable = "TULVANE_HUB_URL";
inline constexpr auto modelHubSetting = "modelHubURL";

} // namespace tulvane
