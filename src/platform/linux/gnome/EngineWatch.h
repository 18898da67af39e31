#pragma once

#include <QProcess>
#include <QProcessEnvironment>
#include <QString>

namespace tulvane {

/// Sees to it that the user's engine comes back should this program end in the middle, killed or crashed: a
/// process of its own, which waits for that and then sets the engine. Main thread.
class EngineWatch final {
public:
    EngineWatch(const QProcessEnvironment& environment, const QString& engine);
    EngineWatch(const EngineWatch&) = delete;
    EngineWatch& operator=(const EngineWatch&) = delete;
    /// The engine is back: ends the watch without doing anything.
    ~EngineWatch();

private:
    QProcess m_process;
};

} // namespace tulvane
