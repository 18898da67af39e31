#pragma once

#include <QProcess>
#include <QProcessEnvironment>
#include <QStringList>

namespace tulvane {

/// Sees to it that a command is run should this program end in the middle, killed or crashed: a process of
/// its own, which waits for that. Main thread.
class EndWatch final {
public:
    EndWatch(const QProcessEnvironment& environment, const QStringList& command);
    EndWatch(const EndWatch&) = delete;
    EndWatch& operator=(const EndWatch&) = delete;
    /// All is well: ends the watch without running anything.
    ~EndWatch();

private:
    QProcess m_process;
};

} // namespace tulvane
