#pragma once

#include <QStringList>

namespace tulvane {

/// What a running program is called, by its file and, where an interpreter runs it, by its script's; empty
/// where there is no such process or it may not be looked at. Any thread.
[[nodiscard]] QStringList programNames(quint32 process);

} // namespace tulvane
