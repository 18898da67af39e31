#include <ports/Presentation.h>
#include <ports/UserDefaults.h>
#include <settings/AppSettings.h>
#include <settings/SettingKeys.h>
#include <settings/SettingsTable.h>

#include <QCoreApplication>
#include <QThread>

#include <concepts>
#include <optional>
#include <utility>

namespace tulvane {

namespace {

template <class T>
QVariant storedForm(const T& value)
{
    if constexpr (StoredEnumeration<T>)
        return rawValue(value);
    else
        return QVariant::fromValue(value);
}

AppSettings::DefaultsProvider& standardDefaults()
{
    static AppSettings::DefaultsProvider provider;
    return provider;
}

AppSettings* makeShared()
{
    Q_ASSERT_X(standardDefaults(), "AppSettings::shared", "setStandardDefaults comes first");
    auto* const settings = new AppSettings(*standardDefaults()().release());
    // Whoever asked first, the settings belong to the main thread.
    if (const QCoreApplication* const application = QCoreApplication::instance())
        settings->moveToThread(application->thread());
    return settings;
}

/// The first of an array of strings; none where it is empty, or where something else is stored.
std::optional<QString> firstString(const QVariant& stored)
{
    if (stored.typeId() != QMetaType::QVariantList)
        return std::nullopt;
    const QVariantList list = stored.toList();
    for (const QVariant& item : list) {
        if (item.typeId() != QMetaType::QString)
            return std::nullopt;
    }
    return list.isEmpty() ? std::nullopt : std::optional(list.first().toString());
}

} // namespace

template <class T>
T AppSettings::load(QLatin1StringView key) const
{
    const SettingDefinition* const definition = findSetting(key);
    Q_ASSERT(definition != nullptr);
    const QVariant value = loadedValue(*definition, m_defaults.value(definition->key));
    if constexpr (StoredEnumeration<T>)
        return fromRawValue<T>(value.toString()).value_or(T{});
    else
        return value.value<T>();
}

AppSettings::AppSettings(UserDefaults& defaults, QObject* parent)
    : QObject(parent),
      m_defaults(defaults),
      m_hotkeyMode(load<HotkeyMode>(settingKeys::hotkeyMode)),
      m_modifierHotkey(load<ModifierHotkey>(settingKeys::modifierHotkey)),
      m_language(load<TranscriptionLanguage>(settingKeys::language)),
      m_selectedModelID(load<QString>(settingKeys::selectedModelID)),
      m_insertionMethod(load<InsertionMethod>(settingKeys::insertionMethod)),
      m_restoreClipboard(load<bool>(settingKeys::restoreClipboard)),
      m_playSounds(load<bool>(settingKeys::playSounds)),
      m_showHUD(load<bool>(settingKeys::showHUD)),
      m_autoCapitalize(load<bool>(settingKeys::autoCapitalize)),
      m_appendTrailingSpace(load<bool>(settingKeys::appendTrailingSpace)),
      m_vocabularyPrompt(load<QString>(settingKeys::vocabularyPrompt)),
      m_maxRecordingSeconds(load<qint64>(settingKeys::maxRecordingSeconds)),
      m_hasCompletedOnboarding(load<bool>(settingKeys::hasCompletedOnboarding)),
      m_showInDock(load<bool>(settingKeys::showInDock)),
      m_typingWordsPerMinute(load<qint64>(settingKeys::typingWordsPerMinute)),
      m_appLanguage(load<AppLanguage>(settingKeys::appLanguage)),
      m_clipboardExpirySeconds(load<qint64>(settingKeys::clipboardExpirySeconds)),
      m_hapticFeedback(load<bool>(settingKeys::hapticFeedback)),
      m_keyboardAutoInsert(load<bool>(settingKeys::keyboardAutoInsert)),
      m_appearance(load<AppearanceMode>(settingKeys::appearance)),
      m_hideSetupChecklist(load<bool>(settingKeys::hideSetupChecklist)),
      m_hidePrivacyCard(load<bool>(settingKeys::hidePrivacyCard))
{
}

void AppSettings::setStandardDefaults(DefaultsProvider provider)
{
    standardDefaults() = std::move(provider);
}

AppSettings& AppSettings::shared()
{
    static AppSettings* const instance = makeShared();
    return *instance;
}

template <class T, class Signal>
void AppSettings::assign(T& member, const T& value, QLatin1StringView key, Signal changed)
{
    member = value;
    Q_EMIT(this->*changed)(member);
    // The member, not the value: an observer may have assigned another one meanwhile, and what is stored
    // must equal what is live.
    store(key, storedForm(member));
}

void AppSettings::store(QLatin1StringView key, const QVariant& value)
{
    const Result<void, DefaultsError> stored = m_defaults.set(key, value);
    if (!stored)
        Q_EMIT writeFailed(key, stored.error());
}

void AppSettings::setHotkeyMode(HotkeyMode value)
{
    assign(m_hotkeyMode, value, settingKeys::hotkeyMode, &AppSettings::hotkeyModeChanged);
}

void AppSettings::setModifierHotkey(ModifierHotkey value)
{
    assign(m_modifierHotkey, value, settingKeys::modifierHotkey, &AppSettings::modifierHotkeyChanged);
}

void AppSettings::setLanguage(TranscriptionLanguage value)
{
    assign(m_language, value, settingKeys::language, &AppSettings::languageChanged);
}

void AppSettings::setSelectedModelID(const QString& value)
{
    assign(m_selectedModelID, value, settingKeys::selectedModelID, &AppSettings::selectedModelIDChanged);
}

void AppSettings::setInsertionMethod(InsertionMethod value)
{
    assign(m_insertionMethod, value, settingKeys::insertionMethod, &AppSettings::insertionMethodChanged);
}

void AppSettings::setRestoreClipboard(bool value)
{
    assign(m_restoreClipboard, value, settingKeys::restoreClipboard, &AppSettings::restoreClipboardChanged);
}

void AppSettings::setPlaySounds(bool value)
{
    assign(m_playSounds, value, settingKeys::playSounds, &AppSettings::playSoundsChanged);
}

void AppSettings::setShowHUD(bool value)
{
    assign(m_showHUD, value, settingKeys::showHUD, &AppSettings::showHUDChanged);
}

void AppSettings::setAutoCapitalize(bool value)
{
    assign(m_autoCapitalize, value, settingKeys::autoCapitalize, &AppSettings::autoCapitalizeChanged);
}

void AppSettings::setAppendTrailingSpace(bool value)
{
    assign(m_appendTrailingSpace, value, settingKeys::appendTrailingSpace,
           &AppSettings::appendTrailingSpaceChanged);
}

void AppSettings::setVocabularyPrompt(const QString& value)
{
    assign(m_vocabularyPrompt, value, settingKeys::vocabularyPrompt, &AppSettings::vocabularyPromptChanged);
}

void AppSettings::setMaxRecordingSeconds(qint64 value)
{
    assign(m_maxRecordingSeconds, value, settingKeys::maxRecordingSeconds,
           &AppSettings::maxRecordingSecondsChanged);
}

void AppSettings::setHasCompletedOnboarding(bool value)
{
    assign(m_hasCompletedOnboarding, value, settingKeys::hasCompletedOnboarding,
           &AppSettings::hasCompletedOnboardingChanged);
}

void AppSettings::setShowInDock(bool value)
{
    assign(m_showInDock, value, settingKeys::showInDock, &AppSettings::showInDockChanged);
}

void AppSettings::setTypingWordsPerMinute(qint64 value)
{
    assign(m_typingWordsPerMinute, value, settingKeys::typingWordsPerMinute,
           &AppSettings::typingWordsPerMinuteChanged);
}

void AppSettings::setAppLanguage(AppLanguage value)
{
    assign(m_appLanguage, value, settingKeys::appLanguage, &AppSettings::appLanguageChanged);
    syncInterfaceLanguage();
}

void AppSettings::setAppearance(AppearanceMode value)
{
    assign(m_appearance, value, settingKeys::appearance, &AppSettings::appearanceChanged);
}

void AppSettings::setHideSetupChecklist(bool value)
{
    assign(m_hideSetupChecklist, value, settingKeys::hideSetupChecklist,
           &AppSettings::hideSetupChecklistChanged);
}

void AppSettings::setHidePrivacyCard(bool value)
{
    assign(m_hidePrivacyCard, value, settingKeys::hidePrivacyCard, &AppSettings::hidePrivacyCardChanged);
}

void AppSettings::syncInterfaceLanguage()
{
    const QString english = rawValue(AppLanguage::english);
    const bool isEnglish = m_defaults.value(settingKeys::appLanguage) == english;
    const QString code = isEnglish ? english : rawValue(AppLanguage::norwegian);
    if (firstString(m_defaults.value(settingKeys::appleLanguages)) != code)
        store(settingKeys::appleLanguages, QStringList{code});
}

void AppSettings::installAppearanceObserver(Presentation& presentation)
{
    applyAppearance(presentation, m_appearance);
    connect(this, &AppSettings::appearanceChanged, this,
            [&presentation, applied = m_appearance](AppearanceMode mode) mutable {
                if (std::exchange(applied, mode) != mode)
                    applyAppearance(presentation, mode);
            });
}

void applyAppearance(Presentation& presentation, AppearanceMode mode)
{
    Appearance appearance = Appearance::none;
    if (mode == AppearanceMode::light)
        appearance = Appearance::light;
    else if (mode == AppearanceMode::dark)
        appearance = Appearance::dark;
    presentation.setAppearance(appearance);
}

} // namespace tulvane
