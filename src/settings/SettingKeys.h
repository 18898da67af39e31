#pragma once

#include <QLatin1StringView>

/// The keys of the preferences; each is also the name of the property of AppSettings that shows it.
namespace tulvane::settingKeys {

inline constexpr QLatin1StringView hotkeyMode{"hotkeyMode"};
inline constexpr QLatin1StringView modifierHotkey{"modifierHotkey"};
inline constexpr QLatin1StringView language{"language"};
inline constexpr QLatin1StringView selectedModelID{"selectedModelID"};
inline constexpr QLatin1StringView insertionMethod{"insertionMethod"};
inline constexpr QLatin1StringView restoreClipboard{"restoreClipboard"};
inline constexpr QLatin1StringView playSounds{"playSounds"};
inline constexpr QLatin1StringView showHUD{"showHUD"};
inline constexpr QLatin1StringView autoCapitalize{"autoCapitalize"};
inline constexpr QLatin1StringView appendTrailingSpace{"appendTrailingSpace"};
inline constexpr QLatin1StringView vocabularyPrompt{"vocabularyPrompt"};
inline constexpr QLatin1StringView maxRecordingSeconds{"maxRecordingSeconds"};
inline constexpr QLatin1StringView hasCompletedOnboarding{"hasCompletedOnboarding"};
inline constexpr QLatin1StringView showInDock{"showInDock"};
inline constexpr QLatin1StringView typingWordsPerMinute{"typingWordsPerMinute"};
inline constexpr QLatin1StringView appLanguage{"appLanguage"};
inline constexpr QLatin1StringView clipboardExpirySeconds{"clipboardExpirySeconds"};
inline constexpr QLatin1StringView hapticFeedback{"hapticFeedback"};
inline constexpr QLatin1StringView keyboardAutoInsert{"keyboardAutoInsert"};
inline constexpr QLatin1StringView appearance{"appearance"};
inline constexpr QLatin1StringView hideSetupChecklist{"hideSetupChecklist"};
inline constexpr QLatin1StringView hidePrivacyCard{"hidePrivacyCard"};

/// Not a property: the system's own list of interface languages for this application, best first.
inline constexpr QLatin1StringView appleLanguages{"AppleLanguages"};

} // namespace tulvane::settingKeys
