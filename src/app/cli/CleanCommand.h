#pragma once

#include <app/cli/Console.h>

#include <QStringList>

namespace tulvane::cli {

/// `tulvane clean [--no-capitalize] [--no-trailing-space]`: standard input, as UTF-8, through the transcript
/// cleanup to `out`. What comes out is the cleaned text and not a character more, no line end either, so that
/// it can be inserted as it stands; nothing at all where nothing usable was left. Bytes that are not UTF-8
/// become U+FFFD.
[[nodiscard]] int runClean(const QStringList& arguments, Console& console);

} // namespace tulvane::cli
