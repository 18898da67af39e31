#pragma once

#include <QProcessEnvironment>
#include <QString>

namespace tulvane {

/// Where the input method service of this session listens; empty where none runs. Reads files.
[[nodiscard]] QString ibusAddress(const QProcessEnvironment& environment);

} // namespace tulvane
