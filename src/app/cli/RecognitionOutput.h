#pragma once

#include <app/cli/Console.h>

#include <QElapsedTimer>
#include <QString>

namespace tulvane::cli {

struct RecognitionArguments;

/// What one recognition gave, and how long it took.
struct Recognised {
    QString text;     ///< cleaned; empty where nothing was recognised
    QString raw;      ///< as the recogniser wrote it
    QString language; ///< the code that was used; the detected one after "auto"
    double audioSeconds = 0;
    double loadSeconds = 0; ///< 0 where the model was loaded already
    double transcribeSeconds = 0;
    QString device; ///< where it was computed; empty for the processor
};

/// Prints it as the words of the command line ask, and says "Nothing recognised" where there is no text.
void printRecognised(const Recognised& recognised, const RecognitionArguments& arguments, Console& console);

/// What has passed since the timer was started.
[[nodiscard]] double secondsOf(const QElapsedTimer& timer);

} // namespace tulvane::cli
