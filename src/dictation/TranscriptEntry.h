#pragma once

#include <QDateTime>
#include <QString>
#include <QUuid>

namespace tulvane {

/// One dictation as the history keeps it; in memory only, never written anywhere.
struct TranscriptEntry {
    QUuid id;
    QDateTime date;             ///< when the text was ready
    QString text;               ///< cleaned
    double durationSeconds = 0; ///< length of the recorded audio

    [[nodiscard]] bool operator==(const TranscriptEntry&) const = default;
};

} // namespace tulvane
