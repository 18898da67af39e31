#pragma once

#include <platform/linux/process/EndWatch.h>

#include <QString>

namespace tulvane {

/// Sees to it that the user's engine comes back should this program end in the middle. Main thread.
class EngineWatch final {
public:
    EngineWatch(const QProcessEnvironment& environment, const QString& engine)
        : m_watch(environment, {QStringLiteral("ibus"), QStringLiteral("engine"), engine})
    {
    }

private:
    EndWatch m_watch;
};

} // namespace tulvane
