#pragma once

#include <settings/StoredEnumeration.h>

#include <QtGlobal>

namespace tulvane {

/// The spoken language. The raw value is the recogniser's own language code.
/// (`auto` cannot name a case in C++, hence `automatic`.)
enum class TranscriptionLanguage { norwegianBokmal, norwegianNynorsk, english, automatic };

template <>
struct StoredCases<TranscriptionLanguage> {
    // The names of the two written standards read the same in every interface language.
    static constexpr std::array cases{
        StoredCase<TranscriptionLanguage>{TranscriptionLanguage::norwegianBokmal, "no", "Norsk bokmål",
                                          TitleForm::asWritten},
        StoredCase<TranscriptionLanguage>{TranscriptionLanguage::norwegianNynorsk, "nn", "Norsk nynorsk",
                                          TitleForm::asWritten},
        StoredCase<TranscriptionLanguage>{TranscriptionLanguage::english, "en",
                                          QT_TRANSLATE_NOOP("tulvane", "English")},
        StoredCase<TranscriptionLanguage>{TranscriptionLanguage::automatic, "auto",
                                          QT_TRANSLATE_NOOP("tulvane", "Auto-detect")},
    };
};

} // namespace tulvane
