#pragma once

namespace tulvane {

/// Decoder threads for a machine with so many active processor cores: two are left to the rest of the
/// desktop, and more than eight gain nothing.
[[nodiscard]] int threadCountFor(int processors);

/// The same for the cores that this process may use.
[[nodiscard]] int recommendedThreadCount();

} // namespace tulvane
