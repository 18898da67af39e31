#pragma once

#include <settings/StoredEnumeration.h>

#include <QtGlobal>

namespace tulvane {

/// Light or dark windows, or whatever the system uses.
enum class AppearanceMode { system, light, dark };

template <>
struct StoredCases<AppearanceMode> {
    static constexpr std::array cases{
        StoredCase<AppearanceMode>{AppearanceMode::system, "system", QT_TRANSLATE_NOOP("tulvane", "System")},
        StoredCase<AppearanceMode>{AppearanceMode::light, "light", QT_TRANSLATE_NOOP("tulvane", "Light")},
        StoredCase<AppearanceMode>{AppearanceMode::dark, "dark", QT_TRANSLATE_NOOP("tulvane", "Dark")},
    };
};

} // namespace tulvane
