#pragma once

#include <settings/AppLanguage.h>

namespace tulvane {

/// Makes `translate()` and the number formats speak the language from now on. What has been built already
/// keeps its words. Once, before the first window; main thread.
void installInterfaceLanguage(AppLanguage language);

} // namespace tulvane
