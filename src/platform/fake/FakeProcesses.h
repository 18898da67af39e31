#pragma once

#include <platform/Processes.h>

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

    std::optional<int> exitStatus = 0;
    QList<Command> commands;
};

} // namespace tulvane
