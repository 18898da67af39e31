#pragma once

#include <QString>

namespace tulvane {

/// Has a screen reader say the text, whatever has the focus. Nothing where no assistive program is there: the
/// toolkit is then not on the accessibility bus. Main thread; returns at once.
void announce(const QString& text);

} // namespace tulvane
