#pragma once

#include <QIODevice>
#include <QTextStream>

namespace tulvane::cli {

/// What a command talks to: text goes to `out`, messages to `err`. The command line speaks English whatever
/// the interface language, so its own texts are not translated.
struct Console {
    QIODevice& in;
    QTextStream& out;
    QTextStream& err;
    bool outIsTerminal = false;
};

/// How a command ends; the process's exit status.
enum ExitStatus : int {
    done = 0,       ///< the command did what it says
    failed = 1,     ///< it could not; the reason stands on `err`
    wrongUsage = 2, ///< the words of the command line are off
    notRunning = 3, ///< it needs the running program, and there is none
};

/// Writes the one line (a reason of several becomes one) that says why a command failed, and gives the status
/// to end with.
[[nodiscard]] inline int fail(Console& console, const QString& reason)
{
    console.err << "tulvane: " << QString(reason).replace(u'\n', u' ') << Qt::endl;
    return ExitStatus::failed;
}

} // namespace tulvane::cli
