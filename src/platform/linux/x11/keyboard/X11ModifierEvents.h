#pragma once

#include <ports/ModifierEvents.h>

#include <QString>

#include <utility>

namespace tulvane {

/// Modifier keys by XInput2's raw events. Each tap has a connection of its own: the server keeps raw events
/// from a client whose own hot key is being held. One that is not enabled costs no wake-ups.
class X11ModifierEvents final : public ModifierEvents {
public:
    /// `display` as in $DISPLAY.
    explicit X11ModifierEvents(QString display) : m_display(std::move(display)) {}

    [[nodiscard]] Result<std::unique_ptr<Tap>, ModifierEventsError>
    createTap(qint64 keyCode, const Handler& handler) override;

private:
    QString m_display;
};

} // namespace tulvane
