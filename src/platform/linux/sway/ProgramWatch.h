#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <QStringList>

#include <sys/types.h>

#include <map>
#include <memory>

namespace tulvane {

/// Signals when a program of one of these names runs in the user's name. The kernel reports the opening of
/// their files and of their ends, so nothing is done while none runs. Main thread.
class ProgramWatch final : public QObject {
    Q_OBJECT

public:
    /// `folders`: where they are installed.
    ProgramWatch(QStringList names, const QStringList& folders);
    Q_DISABLE_COPY_MOVE(ProgramWatch)
    ~ProgramWatch() override;

    [[nodiscard]] bool isRunning() const { return !m_running.empty(); }

Q_SIGNALS:
    /// `isRunning` is another one than before.
    void changed();

private:
    struct Process;

    void watch(const QStringList& folders);
    void opened();
    /// Takes note of those that have been started since the last look.
    void look();
    void ended(pid_t process);

    QStringList m_names;
    int m_files = -1; ///< of which the kernel tells
    std::unique_ptr<QSocketNotifier> m_openings;
    std::map<pid_t, std::unique_ptr<Process>> m_running;
};

} // namespace tulvane
