#pragma once

#include <platform/linux/process/EndWatch.h>

#include <QString>

namespace tulvane {

/// Sees to it that the user's engine comes back should this program end in the middle. Main thread.
class EngineWatch final {
public:
    EngineWatch(const QProcessEnvironment& environment, const QString& engine)
        : m_watch(environment,
                  {QStringLiteral("/bin/sh"), QStringLiteral("-c"), QString::fromUtf8(script), engine})
    {
    }

private:
    /// What the service was about to do for us when we ended may come after the first time, and leave none in
    /// force.
    static constexpr const char* script = "for time in 1 2 3 4; do ibus engine \"$0\"; sleep 0.4; "
                                          "[ \"$(ibus engine)\" != \"$0\" ] || exit 0; done";

    EndWatch m_watch;
};

} // namespace tulvane
