#pragma once

#include <ports/DefaultsError.h>
#include <settings/AppLanguage.h>
#include <settings/AppearanceMode.h>
#include <settings/HotkeyMode.h>
#include <settings/InsertionMethod.h>
#include <settings/ModifierHotkey.h>
#include <settings/TranscriptionLanguage.h>

#include <QLatin1StringView>
#include <QObject>
#include <QString>

#include <functional>
#include <memory>

namespace tulvane {

class Presentation;
class UserDefaults;

/// Every preference of the user, live. Loaded once, at creation; each assignment is told to all observers,
/// then written, also when the value is the one it was. Nothing is clamped or checked, neither read nor
/// assigned.
///
/// Main thread. What another thread needs is copied out before.
class AppSettings final : public QObject {
    Q_OBJECT

    Q_PROPERTY(HotkeyMode hotkeyMode READ hotkeyMode WRITE setHotkeyMode NOTIFY hotkeyModeChanged)
    Q_PROPERTY(ModifierHotkey modifierHotkey READ modifierHotkey WRITE setModifierHotkey NOTIFY
                   modifierHotkeyChanged)
    Q_PROPERTY(TranscriptionLanguage language READ language WRITE setLanguage NOTIFY languageChanged)
    Q_PROPERTY(
        QString selectedModelID READ selectedModelID WRITE setSelectedModelID NOTIFY selectedModelIDChanged)
    Q_PROPERTY(InsertionMethod insertionMethod READ insertionMethod WRITE setInsertionMethod NOTIFY
                   insertionMethodChanged)
    Q_PROPERTY(
        bool restoreClipboard READ restoreClipboard WRITE setRestoreClipboard NOTIFY restoreClipboardChanged)
    Q_PROPERTY(bool playSounds READ playSounds WRITE setPlaySounds NOTIFY playSoundsChanged)
    Q_PROPERTY(bool showHUD READ showHUD WRITE setShowHUD NOTIFY showHUDChanged)
    Q_PROPERTY(bool autoCapitalize READ autoCapitalize WRITE setAutoCapitalize NOTIFY autoCapitalizeChanged)
    Q_PROPERTY(bool appendTrailingSpace READ appendTrailingSpace WRITE setAppendTrailingSpace NOTIFY
                   appendTrailingSpaceChanged)
    Q_PROPERTY(QString vocabularyPrompt READ vocabularyPrompt WRITE setVocabularyPrompt NOTIFY
                   vocabularyPromptChanged)
    Q_PROPERTY(qint64 maxRecordingSeconds READ maxRecordingSeconds WRITE setMaxRecordingSeconds NOTIFY
                   maxRecordingSecondsChanged)
    Q_PROPERTY(bool hasCompletedOnboarding READ hasCompletedOnboarding WRITE setHasCompletedOnboarding NOTIFY
                   hasCompletedOnboardingChanged)
    Q_PROPERTY(bool showInDock READ showInDock WRITE setShowInDock NOTIFY showInDockChanged)
    Q_PROPERTY(qint64 typingWordsPerMinute READ typingWordsPerMinute WRITE setTypingWordsPerMinute NOTIFY
                   typingWordsPerMinuteChanged)
    Q_PROPERTY(AppLanguage appLanguage READ appLanguage WRITE setAppLanguage NOTIFY appLanguageChanged)
    Q_PROPERTY(qint64 clipboardExpirySeconds READ clipboardExpirySeconds CONSTANT)
    Q_PROPERTY(bool hapticFeedback READ hapticFeedback CONSTANT)
    Q_PROPERTY(bool keyboardAutoInsert READ keyboardAutoInsert CONSTANT)
    Q_PROPERTY(AppearanceMode appearance READ appearance WRITE setAppearance NOTIFY appearanceChanged)
    Q_PROPERTY(bool hideSetupChecklist READ hideSetupChecklist WRITE setHideSetupChecklist NOTIFY
                   hideSetupChecklistChanged)
    Q_PROPERTY(
        bool hidePrivacyCard READ hidePrivacyCard WRITE setHidePrivacyCard NOTIFY hidePrivacyCardChanged)

public:
    using DefaultsProvider = std::function<std::unique_ptr<UserDefaults>()>;

    /// Loads every preference. `defaults` is kept for writing and outlives this object.
    explicit AppSettings(UserDefaults& defaults, QObject* parent = nullptr);

    /// Names what the shared instance stands on. Call once, before its first use.
    static void setStandardDefaults(DefaultsProvider provider);
    /// The one instance of the process: made on the first call, from whichever thread, and never destroyed.
    [[nodiscard]] static AppSettings& shared();

    [[nodiscard]] UserDefaults& defaults() const { return m_defaults; }

    [[nodiscard]] HotkeyMode hotkeyMode() const { return m_hotkeyMode; }
    [[nodiscard]] ModifierHotkey modifierHotkey() const { return m_modifierHotkey; }
    [[nodiscard]] TranscriptionLanguage language() const { return m_language; }
    [[nodiscard]] QString selectedModelID() const { return m_selectedModelID; }
    [[nodiscard]] InsertionMethod insertionMethod() const { return m_insertionMethod; }
    [[nodiscard]] bool restoreClipboard() const { return m_restoreClipboard; }
    [[nodiscard]] bool playSounds() const { return m_playSounds; }
    [[nodiscard]] bool showHUD() const { return m_showHUD; }
    [[nodiscard]] bool autoCapitalize() const { return m_autoCapitalize; }
    [[nodiscard]] bool appendTrailingSpace() const { return m_appendTrailingSpace; }
    [[nodiscard]] QString vocabularyPrompt() const { return m_vocabularyPrompt; }
    [[nodiscard]] qint64 maxRecordingSeconds() const { return m_maxRecordingSeconds; }
    [[nodiscard]] bool hasCompletedOnboarding() const { return m_hasCompletedOnboarding; }
    [[nodiscard]] bool showInDock() const { return m_showInDock; }
    [[nodiscard]] qint64 typingWordsPerMinute() const { return m_typingWordsPerMinute; }
    [[nodiscard]] AppLanguage appLanguage() const { return m_appLanguage; }
    [[nodiscard]] qint64 clipboardExpirySeconds() const { return m_clipboardExpirySeconds; }
    [[nodiscard]] bool hapticFeedback() const { return m_hapticFeedback; }
    [[nodiscard]] bool keyboardAutoInsert() const { return m_keyboardAutoInsert; }
    [[nodiscard]] AppearanceMode appearance() const { return m_appearance; }
    [[nodiscard]] bool hideSetupChecklist() const { return m_hideSetupChecklist; }
    [[nodiscard]] bool hidePrivacyCard() const { return m_hidePrivacyCard; }

    void setHotkeyMode(HotkeyMode value);
    void setModifierHotkey(ModifierHotkey value);
    void setLanguage(TranscriptionLanguage value);
    void setSelectedModelID(const QString& value);
    void setInsertionMethod(InsertionMethod value);
    void setRestoreClipboard(bool value);
    void setPlaySounds(bool value);
    void setShowHUD(bool value);
    void setAutoCapitalize(bool value);
    void setAppendTrailingSpace(bool value);
    void setVocabularyPrompt(const QString& value);
    void setMaxRecordingSeconds(qint64 value);
    void setHasCompletedOnboarding(bool value);
    void setShowInDock(bool value);
    void setTypingWordsPerMinute(qint64 value);
    void setAppLanguage(AppLanguage value);
    void setAppearance(AppearanceMode value);
    void setHideSetupChecklist(bool value);
    void setHidePrivacyCard(bool value);

    /// Applies the current appearance now, and each other one from now on. `presentation` lives as long as
    /// the process.
    void installAppearanceObserver(Presentation& presentation);
    /// Makes the system's own list of languages begin with the interface language. Takes effect at the next
    /// start of the program.
    void syncInterfaceLanguage();

Q_SIGNALS:
    void hotkeyModeChanged(HotkeyMode value);
    void modifierHotkeyChanged(ModifierHotkey value);
    void languageChanged(TranscriptionLanguage value);
    void selectedModelIDChanged(const QString& value);
    void insertionMethodChanged(InsertionMethod value);
    void restoreClipboardChanged(bool value);
    void playSoundsChanged(bool value);
    void showHUDChanged(bool value);
    void autoCapitalizeChanged(bool value);
    void appendTrailingSpaceChanged(bool value);
    void vocabularyPromptChanged(const QString& value);
    void maxRecordingSecondsChanged(qint64 value);
    void hasCompletedOnboardingChanged(bool value);
    void showInDockChanged(bool value);
    void typingWordsPerMinuteChanged(qint64 value);
    void appLanguageChanged(AppLanguage value);
    void appearanceChanged(AppearanceMode value);
    void hideSetupChecklistChanged(bool value);
    void hidePrivacyCardChanged(bool value);

    /// A value holds, but could not be stored; the error's description is for the user.
    void writeFailed(const QString& key, const tulvane::DefaultsError& error);

private:
    template <class T>
    [[nodiscard]] T load(QLatin1StringView key) const;
    template <class T, class Signal>
    void assign(T& member, const T& value, QLatin1StringView key, Signal changed);
    void store(QLatin1StringView key, const QVariant& value);

    UserDefaults& m_defaults;
    HotkeyMode m_hotkeyMode;
    ModifierHotkey m_modifierHotkey;
    TranscriptionLanguage m_language;
    QString m_selectedModelID;
    InsertionMethod m_insertionMethod;
    bool m_restoreClipboard;
    bool m_playSounds;
    bool m_showHUD;
    bool m_autoCapitalize;
    bool m_appendTrailingSpace;
    QString m_vocabularyPrompt;
    qint64 m_maxRecordingSeconds;
    bool m_hasCompletedOnboarding;
    bool m_showInDock;
    qint64 m_typingWordsPerMinute;
    AppLanguage m_appLanguage;
    qint64 m_clipboardExpirySeconds;
    bool m_hapticFeedback;
    bool m_keyboardAutoInsert;
    AppearanceMode m_appearance;
    bool m_hideSetupChecklist;
    bool m_hidePrivacyCard;
};

/// Sets the application's appearance: none of its own for `system`.
void applyAppearance(Presentation& presentation, AppearanceMode mode);

} // namespace tulvane
