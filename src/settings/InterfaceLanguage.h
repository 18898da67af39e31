#pragma once

#include <base/Translate.h>
#include <settings/AppLanguage.h>

namespace tulvane {

/// Makes `translate()` and the number formats speak the language from now on. What has been built already
/// keeps its words. Main thread.
void installInterfaceLanguage(AppLanguage language);

/// The command line speaks English, whatever the interface speaks: while this lives, so does `translate()`.
/// Main thread; does not nest.
class ScopedEnglish final {
public:
    ScopedEnglish();
    ScopedEnglish(const ScopedEnglish&) = delete;
    ScopedEnglish& operator=(const ScopedEnglish&) = delete;
    ~ScopedEnglish();
};

} // namespace tulvane
