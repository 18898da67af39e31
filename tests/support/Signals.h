#pragma once

#include <QtGlobal>

class QProcess;

namespace tulvane::test {

/// Sends a signal to one process; to none where the number is none's. `kill` would take 0 for the test's own
/// process group and -1 for every process there is, and a process that has ended has the number 0.
void sendSignal(qint64 process, int signal);
void sendSignal(const QProcess& process, int signal);

} // namespace tulvane::test
