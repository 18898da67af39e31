#pragma once

#include <support/Await.h>

#include <QProcess>

#include <stdexcept>
#include <string>

namespace tulvane::test {

/// Runs the event loop until the predicate, about something that the started program does, holds. Throws
/// std::runtime_error, with `missing` and the program's own last words, when the time limit passes first, and
/// at once when the program has ended.
template <class Predicate>
void awaitProgram(QProcess& process, const std::string& missing, Predicate&& predicate,
                  std::chrono::milliseconds timeout = defaultTimeout)
{
    const auto hasEnded = [&process] { return process.state() == QProcess::NotRunning; };
    bool holds = false;
    const auto look = [&] { return holds = predicate(); };
    static_cast<void>(waitUntil([&] { return look() || hasEnded(); }, timeout));
    // What it did last may have come only with its end.
    if (holds || look())
        return;
    const std::string end = hasEnded() ? "; it has ended" : "";
    throw std::runtime_error(process.program().toStdString() + ": " + missing + end + ": " +
                             process.readAllStandardError().right(2000).toStdString());
}

} // namespace tulvane::test
