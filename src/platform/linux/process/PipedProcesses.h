#pragma once

#include <ports/HelperProcess.h>

namespace tulvane {

/// Helpers as children of this process, over pipes. The kernel kills them when the thread that started them
/// ends, so that none outlives a crash of ours.
class PipedProcesses final : public HelperProcesses {
public:
    [[nodiscard]] std::unique_ptr<HelperProcess> start(const QString& program,
                                                       const QStringList& arguments) const override;
};

} // namespace tulvane
