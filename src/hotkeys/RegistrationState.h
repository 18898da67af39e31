#pragma once

#include <ports/HotkeyError.h>

#include <optional>

namespace tulvane {

/// How a name's key combination stands with the system.
struct RegistrationState {
    enum class Kind {
        noShortcut, ///< none is set
        unused,     ///< one is set, and it is not listened for
        paused,     ///< set aside while the user chooses a combination
        registered, ///< pressing it works
        failed,     ///< pressing it does nothing: `error` says why
    };

    Kind kind = Kind::noShortcut;
    std::optional<HotkeyError> error;

    [[nodiscard]] friend bool operator==(const RegistrationState&, const RegistrationState&) = default;
};

} // namespace tulvane
