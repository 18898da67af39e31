#pragma once

#include <platform/linux/kde/KGlobalAccel.h>
#include <ports/KeyboardGrab.h>

namespace tulvane {

/// The desktop's own key combinations do nothing while a window holds them back: they reach it as any key
/// does. Ends when the window is hidden, gone or no longer in front. The service does not notice when a
/// program that holds them back is killed; so the next start gives them free.
class KGlobalAccelGrab final : public KeyboardGrab {
public:
    explicit KGlobalAccelGrab(QDBusConnection bus);

    [[nodiscard]] std::unique_ptr<Hold> hold(QWindow& window) override;

private:
    KGlobalAccel m_service;
};

} // namespace tulvane
