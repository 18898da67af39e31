#pragma once

#include <QString>

namespace tulvane {

/// The character that a keysym shows on a key; dead keys show their accent. Empty for one that shows nothing.
[[nodiscard]] QString characterOfKeysym(quint32 keysym);

/// The keysym with this name, whatever its case, or of a single character. 0 where there is none.
[[nodiscard]] quint32 keysymNamed(const QString& name);

} // namespace tulvane
