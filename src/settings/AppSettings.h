#pragma once

#include <ports/DefaultsError.h>
#include <settings/AppLanguage.h>
#include <settings/AppearanceMode.h>
#include <settings/HotkeyMode.h>
#include <settings/InsertionMethod.h>
#include <settings/ModifierHotkey.h>
#include <settings/Setting.h>
#include <settings/TranscriptionLanguage.h>

#include <QList>
#include <QObject>
#include <QString>

#include <optional>

namespace tulvane {

class Presentation;
class UserDefaults;

/// Every preference of the user, live, one row each: `settings.playSounds()` reads,
/// `settings.playSounds.set(false)` assigns, `&settings.playSounds` is the sender of `AnySetting::changed`.
/// Loaded once, at creation. Main thread. What another thread needs is copied out before.
///
/// A new preference is one row below, in the order of the command line's list; the form on the Settings page
/// and the catalogues' entries for its title are all else there is to write.
class AppSettings final : public QObject {
    Q_OBJECT

    // Above the rows, which add themselves when they are made.
    UserDefaults& m_defaults;
    QList<AnySetting*> m_all;
    std::optional<DefaultsError> m_trouble;

    template <class T>
    using KeptForOthers = Setting<T, SettingWriter::others>;

public:
    Setting<HotkeyMode> hotkeyMode{*this, {.key = "hotkeyMode", .defaultValue = HotkeyMode::toggle}};
    Setting<ModifierHotkey> modifierHotkey{*this,
                                           {.key = "modifierHotkey", .defaultValue = ModifierHotkey::none}};
    Setting<TranscriptionLanguage> language{*this,
                                            {.key = "language",
                                             .defaultValue = TranscriptionLanguage::norwegianBokmal,
                                             .title = QT_TRANSLATE_NOOP("tulvane", "Language")}};
    Setting<QString> selectedModelID{*this,
                                     {.key = "selectedModelID",
                                      .defaultValue = QStringLiteral("nb-whisper-medium-q5_0"),
                                      .texts = PermittedTexts::modelIDs}};
    Setting<InsertionMethod> insertionMethod{*this,
                                             {.key = "insertionMethod",
                                              .defaultValue = InsertionMethod::paste,
                                              .title = QT_TRANSLATE_NOOP("tulvane", "Insert text by")}};
    Setting<bool> restoreClipboard{*this,
                                   {.key = "restoreClipboard",
                                    .defaultValue = true,
                                    .title = QT_TRANSLATE_NOOP("tulvane", "Restore clipboard")}};
    Setting<bool> playSounds{
        *this, {.key = "playSounds", .defaultValue = true, .title = QT_TRANSLATE_NOOP("tulvane", "Sounds")}};
    Setting<bool> showHUD{*this,
                          {.key = "showHUD",
                           .defaultValue = true,
                           .title = QT_TRANSLATE_NOOP("tulvane", "On-screen indicator")}};
    Setting<bool> autoCapitalize{*this,
                                 {.key = "autoCapitalize",
                                  .defaultValue = true,
                                  .title = QT_TRANSLATE_NOOP("tulvane", "Capitalise the first letter")}};
    Setting<bool> appendTrailingSpace{*this,
                                      {.key = "appendTrailingSpace",
                                       .defaultValue = true,
                                       .title = QT_TRANSLATE_NOOP("tulvane", "Add a space after the text")}};
    Setting<QString> vocabularyPrompt{*this,
                                      {.key = "vocabularyPrompt",
                                       .defaultValue = QStringLiteral(""),
                                       .title = QT_TRANSLATE_NOOP("tulvane", "Vocabulary")}};
    /// In seconds.
    Setting<qint64> maxRecordingSeconds{*this,
                                        {.key = "maxRecordingSeconds",
                                         .defaultValue = 300,
                                         .title = QT_TRANSLATE_NOOP("tulvane", "Stop automatically"),
                                         .steps = IntegerSteps{10, 1800, 10}}};
    Setting<bool> hasCompletedOnboarding{
        *this, {.key = "hasCompletedOnboarding", .defaultValue = false, .reading = BooleanReading::plain}};
    Setting<bool> showInDock{
        *this,
        {.key = "showInDock", .defaultValue = true, .title = QT_TRANSLATE_NOOP("tulvane", "Show in Dock")}};
    /// In words per minute.
    Setting<qint64> typingWordsPerMinute{
        *this, {.key = "typingWordsPerMinute", .defaultValue = 40, .steps = IntegerSteps{15, 120, 5}}};
    Setting<AppLanguage> appLanguage{*this,
                                     {.key = "appLanguage",
                                      .defaultValue = AppLanguage::norwegian,
                                      .title = QT_TRANSLATE_NOOP("tulvane", "App language")}};
    /// In seconds.
    KeptForOthers<qint64> clipboardExpirySeconds{*this,
                                                 {.key = "clipboardExpirySeconds", .defaultValue = 120}};
    KeptForOthers<bool> hapticFeedback{*this, {.key = "hapticFeedback", .defaultValue = true}};
    KeptForOthers<bool> keyboardAutoInsert{*this, {.key = "keyboardAutoInsert", .defaultValue = false}};
    Setting<AppearanceMode> appearance{*this,
                                       {.key = "appearance",
                                        .defaultValue = AppearanceMode::system,
                                        .title = QT_TRANSLATE_NOOP("tulvane", "Appearance")}};
    Setting<bool> hideSetupChecklist{
        *this, {.key = "hideSetupChecklist", .defaultValue = false, .reading = BooleanReading::plain}};
    Setting<bool> hidePrivacyCard{
        *this, {.key = "hidePrivacyCard", .defaultValue = false, .reading = BooleanReading::plain}};

    /// What speech models run on: "auto", "cpu" for the processor alone, or the name of a graphics card.
    Setting<QString> computingDevice{*this,
                                     {.key = "computingDevice", .defaultValue = QStringLiteral("auto")}};
    /// Whether the program may read the keyboards themselves for a single key, on a desktop that tells
    /// programs of none.
    Setting<bool> readsKeyboards{*this, {.key = "readsKeyboards", .defaultValue = false}};

    /// Loads every preference. `defaults` is kept for writing and outlives this object; its trouble comes
    /// here from now on.
    explicit AppSettings(UserDefaults& defaults, QObject* parent = nullptr);

    [[nodiscard]] UserDefaults& defaults() const { return m_defaults; }
    /// Every preference, in order.
    [[nodiscard]] const QList<AnySetting*>& all() const { return m_all; }
    /// Null for a key that is no preference.
    [[nodiscard]] AnySetting* find(const QString& key) const;

    /// The last trouble with the stored preferences as a whole, in this process; none while there was none.
    [[nodiscard]] const std::optional<DefaultsError>& trouble() const { return m_trouble; }

    /// Applies the current appearance now, and each other one from now on. `presentation` lives as long as
    /// the process.
    void installAppearanceObserver(Presentation& presentation);
    /// Makes the system's own list of languages begin with the interface language. Takes effect at the next
    /// start of the program.
    void syncInterfaceLanguage();

Q_SIGNALS:
    /// A value holds, but could not be stored; the error's description is for the user.
    void writeFailed(const QString& key, const tulvane::DefaultsError& error);

    /// `trouble()` is another one.
    void troubled(const tulvane::DefaultsError& error);

private:
    friend AnySetting;
    void store(const QString& key, const QVariant& value);
};

/// Sets the application's appearance: none of its own for `system`.
void applyAppearance(Presentation& presentation, AppearanceMode mode);

} // namespace tulvane
