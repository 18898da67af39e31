#pragma once

#include <settings/StoredEnumeration.h>

#include <QtGlobal>

namespace tulvane {

/// How a transcript reaches the program in front.
enum class InsertionMethod { paste, accessibilityThenPaste, clipboardOnly };

template <>
struct StoredCases<InsertionMethod> {
    static constexpr std::array cases{
        StoredCase<InsertionMethod>{InsertionMethod::paste, "paste",
                                    QT_TRANSLATE_NOOP("tulvane", "Paste (recommended)")},
        StoredCase<InsertionMethod>{InsertionMethod::accessibilityThenPaste, "accessibilityThenPaste",
                                    QT_TRANSLATE_NOOP("tulvane", "Accessibility API, then paste")},
        StoredCase<InsertionMethod>{InsertionMethod::clipboardOnly, "clipboardOnly",
                                    QT_TRANSLATE_NOOP("tulvane", "Copy to clipboard only")},
    };
};

} // namespace tulvane
