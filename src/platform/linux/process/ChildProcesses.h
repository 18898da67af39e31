#pragma once

#include <ports/Processes.h>

namespace tulvane {

/// Processes as children of this one, detached ones in a session of their own.
class ChildProcesses final : public Processes {
public:
    [[nodiscard]] std::optional<int> run(const QString& program, const QStringList& arguments) override;
    [[nodiscard]] Result<void, QString> startDetached(const QString& program,
                                                      const QStringList& arguments) override;
};

} // namespace tulvane
