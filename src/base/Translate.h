#pragma once

#include <QString>

class QTranslator;

namespace tulvane {

/// The user's word for an English text. The English text is the key; without a catalogue, or without an
/// entry in it, it is also the answer. Every text that a user sees passes through here; log lines never do.
/// Main thread, or any thread while no translator is being installed.
[[nodiscard]] QString translate(const char* english);

/// From now on this catalogue alone answers, in place of the application's; null gives the application's
/// back. Windows are not told. The result is the one that answered before. Main thread.
const QTranslator* speakOnly(const QTranslator* catalogue);

} // namespace tulvane
