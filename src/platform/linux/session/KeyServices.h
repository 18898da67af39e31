#pragma once

#include <ports/GlobalHotkeys.h>
#include <ports/ModifierEvents.h>

#include <QProcessEnvironment>

#include <memory>

namespace tulvane {

/// Both sources of hotkeys on the desktop that is running. Never null: where a source cannot work, it says
/// why and what to do.
struct KeyServices {
    std::unique_ptr<GlobalHotkeys> hotkeys;
    std::unique_ptr<ModifierEvents> modifierEvents;
};

/// Picks them by the session that the environment describes.
[[nodiscard]] KeyServices makeKeyServices(const QProcessEnvironment& environment);

} // namespace tulvane
