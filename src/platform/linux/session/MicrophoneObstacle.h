#pragma once

#include <base/Translate.h>
#include <ports/Obstacle.h>

namespace tulvane {

/// Why the microphone cannot be used where the sound server refuses it, in the user's language.
[[nodiscard]] inline Obstacle refusedMicrophone()
{
    return {translate("The sound server refuses access to the microphone."),
            translate("Allow Tulvane to record in your desktop's sound or privacy settings.")};
}

} // namespace tulvane
