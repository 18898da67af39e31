#pragma once

#include <ports/RemoteControl.h>

#include <QLatin1StringView>

namespace tulvane {

/// What the session bus knows the running program by.
namespace remoteNames {

/// The name on the bus, and the interface.
inline constexpr QLatin1StringView service("com.dunio.Tulvane");
inline constexpr QLatin1StringView path("/com/dunio/Tulvane");

/// The method that carries a request.
[[nodiscard]] QLatin1StringView methodOf(RemoteRequest request);

} // namespace remoteNames

} // namespace tulvane
