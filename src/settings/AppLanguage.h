#pragma once

#include <settings/StoredEnumeration.h>

#include <QtGlobal>

namespace tulvane {

/// The language of the program's own interface. The raw value names its locale and its catalogue
/// (i18n/tulvane_<raw value>.ts), the title is its name for itself.
enum class AppLanguage { norwegian, english };

template <>
struct StoredCases<AppLanguage> {
    static constexpr std::array cases{
        StoredCase<AppLanguage>{AppLanguage::norwegian, "nb", QT_TRANSLATE_NOOP("tulvane", "Norsk")},
        StoredCase<AppLanguage>{AppLanguage::english, "en", QT_TRANSLATE_NOOP("tulvane", "English")},
    };
};

} // namespace tulvane
