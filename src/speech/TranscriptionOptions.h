#pragma once

#include <QString>

#include <optional>

namespace tulvane {

/// How one take is to be transcribed.
struct TranscriptionOptions {
    QString language = QStringLiteral("auto"); ///< a whisper language code: "no", "nn", "en" or "auto"
    std::optional<QString> initialPrompt = {}; ///< the user's vocabulary; empty is the same as none
    qint64 threadCount = 1;                    ///< decoder threads; must fit in 32 bits
    bool translate = false;                    ///< ask for an English translation
};

} // namespace tulvane
