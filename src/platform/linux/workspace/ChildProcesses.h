#pragma once

#include <platform/Processes.h>

namespace tulvane {

/// Processes as children of this one.
class ChildProcesses final : public Processes {
public:
    [[nodiscard]] std::optional<int> run(const QString& program, const QStringList& arguments) override;
};

} // namespace tulvane
