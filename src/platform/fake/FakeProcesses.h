#pragma once

#include <ports/Processes.h>

#include <QList>

#include <utility>

namespace tulvane {

/// Runs nothing; keeps what it was asked to run and answers as the test says.
class FakeProcesses final : public Processes {
public:
    using Command = std::pair<QString, QStringList>;

    [[nodiscard]] std::optional<int> run(const QString& program, const QStringList& arguments) override
    {
        commands.append({program, arguments});
        return exitStatus;
    }
    [[nodiscard]] Result<void, QString> startDetached(const QString& program,
                                                      const QStringList& arguments) override
    {
        detached.append({program, arguments});
        if (startFailure)
            return failure(*startFailure);
        return {};
    }

    std::optional<int> exitStatus = 0;
    QList<Command> commands;             ///< what was run, oldest first
    std::optional<QString> startFailure; ///< why nothing can be started
    QList<Command> detached;             ///< what was started, or failed to, oldest first
};

} // namespace tulvane
