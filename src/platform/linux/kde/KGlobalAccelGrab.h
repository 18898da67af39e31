#pragma once

#include <platform/linux/kde/KGlobalAccel.h>
#include <platform/linux/process/EndWatch.h>
#include <ports/KeyboardGrab.h>

namespace tulvane {

/// The desktop's own key combinations do nothing while a window holds them back: they reach it as any key
/// does. Ends when the window is hidden, gone or no longer in front. The service does not notice when a
/// program that holds them back is killed; so a watch gives them free then, and the next start once more.
/// Main thread.
class KGlobalAccelGrab final : public KeyboardGrab {
public:
    /// `environment`: of the session whose bus it is.
    KGlobalAccelGrab(std::shared_ptr<LastingBus> bus, QProcessEnvironment environment);

    /// Gives the keys free should this program end in the middle. `owner`: the connection of the service that
    /// holds them back; asked by its own name, one that has gone would be started anew by the bus.
    [[nodiscard]] static std::unique_ptr<EndWatch> watch(const QProcessEnvironment& environment,
                                                         const QString& owner);

    [[nodiscard]] std::unique_ptr<Hold> hold(QWindow& window) override;

private:
    KGlobalAccel m_service;
    QProcessEnvironment m_environment;
};

} // namespace tulvane
