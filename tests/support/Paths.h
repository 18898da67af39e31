#pragma once

#include <QString>

namespace tulvane::test {

/// The unpacked demo model of this build.
[[nodiscard]] QString demoModelPath();
/// The root of the source tree.
[[nodiscard]] QString sourceFolder();

} // namespace tulvane::test
