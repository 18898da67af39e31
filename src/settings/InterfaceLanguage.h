#pragma once

#include <base/Translate.h>
#include <settings/AppLanguage.h>

#include <QLocale>

class QTranslator;

namespace tulvane {

/// How dates, times and numbers are written: as the user has told the system (LC_TIME, LC_NUMERIC), whatever
/// the interface speaks; where the system knows no language, as the interface's.
[[nodiscard]] QLocale formatsFor(AppLanguage language, const QLocale& system);

/// Makes `translate()` speak the language, and formats the user's, from now on. What has been built already
/// keeps its words. Main thread.
void installInterfaceLanguage(AppLanguage language);

/// The command line speaks English, whatever the interface speaks: while this lives, so does `translate()`.
/// Nests. Nothing that an interface shows may be made meanwhile: it would speak English, too. Main thread.
class ScopedEnglish final {
public:
    ScopedEnglish();
    ScopedEnglish(const ScopedEnglish&) = delete;
    ScopedEnglish& operator=(const ScopedEnglish&) = delete;
    ~ScopedEnglish();

private:
    const QTranslator* m_before;
};

} // namespace tulvane
