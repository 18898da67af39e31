#include <dictation/Indicator.h>
#include <settings/AppSettings.h>
#include <ui/viewmodels/PreferencesViewModel.h>
#include <ui/viewmodels/SettingValues.h>

#include <QQmlPropertyMap>

#include <ports/LoginItem.h>

namespace tulvane {

namespace {

QVariantMap option(const QString& value, const QString& title)
{
    return {{QStringLiteral("value"), value}, {QStringLiteral("title"), title}};
}

QVariantList optionsOf(const AnySetting& setting)
{
    QVariantList options;
    for (const SettingChoice& choice : setting.choices())
        options.append(option(choice.rawValue, choice.title));
    return options;
}

} // namespace

PreferencesViewModel::PreferencesViewModel(const UiContext& context, QObject* parent)
    : QObject(parent),
      m_context(context),
      m_settings(settingValues(context.settings, this))
{
    const AppSettings& settings = context.settings;
    connect(&settings.language, &AnySetting::changed, this, &PreferencesViewModel::languageChanged);
    connect(&settings.insertionMethod, &AnySetting::changed, this,
            &PreferencesViewModel::insertionMethodChanged);
    connect(&settings.appearance, &AnySetting::changed, this, &PreferencesViewModel::appearanceChanged);
    connect(&settings.appLanguage, &AnySetting::changed, this, &PreferencesViewModel::appLanguageChanged);
    connect(&settings, &AppSettings::writeFailed, this, [this](const QString&, const DefaultsError& error) {
        m_storageFailure = error.description();
        Q_EMIT storageFailureChanged();
    });
    const auto noteTrouble = [this](const DefaultsError& error) {
        m_storageFailure = error.description();
        Q_EMIT storageFailureChanged();
    };
    connect(&settings, &AppSettings::troubled, this, noteTrouble);
    if (settings.trouble())
        noteTrouble(*settings.trouble());
}

QVariantList PreferencesViewModel::languages() const
{
    return optionsOf(m_context.settings.language);
}

QString PreferencesViewModel::language() const
{
    return m_context.settings.language.value().toString();
}

void PreferencesViewModel::setLanguage(const QString& value)
{
    (void)m_context.settings.language.setValue(value);
}

QVariantList PreferencesViewModel::insertionMethods() const
{
    return optionsOf(m_context.settings.insertionMethod);
}

QString PreferencesViewModel::insertionMethod() const
{
    return m_context.settings.insertionMethod.value().toString();
}

void PreferencesViewModel::setInsertionMethod(const QString& value)
{
    (void)m_context.settings.insertionMethod.setValue(value);
}

QVariantList PreferencesViewModel::appearances() const
{
    return optionsOf(m_context.settings.appearance);
}

QString PreferencesViewModel::appearance() const
{
    return m_context.settings.appearance.value().toString();
}

void PreferencesViewModel::setAppearance(const QString& value)
{
    (void)m_context.settings.appearance.setValue(value);
}

QVariantList PreferencesViewModel::appLanguages()
{
    // Each in its own words, and English first, which a reader of no offered language is likeliest to know.
    QVariantList options;
    for (const AppLanguage language : allCases<AppLanguage>()) {
        const QVariantMap entry = option(rawValue(language), untranslatedTitle(language));
        options.insert(language == AppLanguage::english ? 0 : options.size(), entry);
    }
    return options;
}

QString PreferencesViewModel::appLanguage() const
{
    return rawValue(m_context.settings.appLanguage());
}

void PreferencesViewModel::setAppLanguage(const QString& value)
{
    const auto language = fromRawValue<AppLanguage>(value);
    if (!language || *language == m_context.settings.appLanguage())
        return;
    m_context.settings.appLanguage.set(*language);
    m_context.relaunch();
}

QObject* PreferencesViewModel::settings() const
{
    return m_settings;
}

QVariantMap PreferencesViewModel::rows() const
{
    QVariantMap rows;
    for (const AnySetting* const setting : m_context.settings.all()) {
        const IntegerSteps steps = setting->steps().value_or(IntegerSteps{});
        rows.insert(setting->key(), QVariantMap{{QStringLiteral("title"), setting->title()},
                                                {QStringLiteral("from"), steps.least},
                                                {QStringLiteral("to"), steps.most},
                                                {QStringLiteral("step"), steps.step}});
    }
    return rows;
}

bool PreferencesViewModel::pastes() const
{
    return m_context.settings.insertionMethod() != InsertionMethod::clipboardOnly;
}

bool PreferencesViewModel::launchAtLogin() const
{
    return m_context.loginItem.isEnabled();
}

void PreferencesViewModel::setLaunchAtLogin(bool launch)
{
    const auto set = m_context.loginItem.setEnabled(launch);
    m_launchAtLoginFailure = set ? QString() : set.error();
    Q_EMIT launchAtLoginChanged();
}

void PreferencesViewModel::showSetupGuide() const
{
    m_context.windows->showOnboarding();
}

} // namespace tulvane
