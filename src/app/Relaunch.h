#pragma once

#include <QString>
#include <QStringList>

#include <functional>

namespace tulvane {

class Processes;

/// The shell's words that wait until the process has gone and then become the program. `program` is any path;
/// the arguments stand as they are, so they are plain words.
[[nodiscard]] QString relaunchCommand(qint64 process, const QString& program, const QStringList& arguments);

/// Has this program started anew once this process has ended, and ends it: also where no process could be
/// found to start it, which is logged. Main thread.
void relaunch(Processes& processes, const QString& program, const QStringList& arguments,
              const std::function<void()>& terminate);

} // namespace tulvane
