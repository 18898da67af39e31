#include <dictation/Indicator.h>
#include <ports/LoginItem.h>
#include <ports/StatusItem.h>
#include <settings/AppSettings.h>
#include <ui/viewmodels/PreferencesViewModel.h>
#include <ui/viewmodels/SettingValues.h>

#include <QQmlPropertyMap>

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

PreferencesViewModel::PreferencesViewModel(AppSettings& settings, LoginItem& loginItem,
                                           StatusItem& statusItem, Windows& windows,
                                           std::function<void()> relaunch, std::function<void()> quit,
                                           QObject* parent)
    : QObject(parent),
      m_stored(settings),
      m_settings(settingValues(settings, this)),
      m_loginItem(loginItem),
      m_statusItem(statusItem),
      m_windows(windows),
      m_relaunch(std::move(relaunch)),
      m_quit(std::move(quit))
{
    m_statusItem.setShownHandler([this] { Q_EMIT hasStatusIconChanged(); });
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

PreferencesViewModel::~PreferencesViewModel()
{
    m_statusItem.setShownHandler({});
}

bool PreferencesViewModel::hasStatusIcon() const
{
    return m_statusItem.isShown();
}

QVariantList PreferencesViewModel::languages() const
{
    return optionsOf(m_stored.language);
}

QString PreferencesViewModel::language() const
{
    return m_stored.language.value().toString();
}

void PreferencesViewModel::setLanguage(const QString& value)
{
    (void)m_stored.language.setValue(value);
}

QVariantList PreferencesViewModel::insertionMethods() const
{
    return optionsOf(m_stored.insertionMethod);
}

QString PreferencesViewModel::insertionMethod() const
{
    return m_stored.insertionMethod.value().toString();
}

void PreferencesViewModel::setInsertionMethod(const QString& value)
{
    (void)m_stored.insertionMethod.setValue(value);
}

QVariantList PreferencesViewModel::appearances() const
{
    return optionsOf(m_stored.appearance);
}

QString PreferencesViewModel::appearance() const
{
    return m_stored.appearance.value().toString();
}

void PreferencesViewModel::setAppearance(const QString& value)
{
    (void)m_stored.appearance.setValue(value);
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
    return rawValue(m_stored.appLanguage());
}

void PreferencesViewModel::setAppLanguage(const QString& value)
{
    const auto language = fromRawValue<AppLanguage>(value);
    if (!language || *language == m_stored.appLanguage())
        return;
    m_stored.appLanguage.set(*language);
    m_relaunch();
}

QObject* PreferencesViewModel::settings() const
{
    return m_settings;
}

QVariantMap PreferencesViewModel::rows() const
{
    QVariantMap rows;
    for (const AnySetting* const setting : m_stored.all()) {
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
    return m_stored.insertionMethod() != InsertionMethod::clipboardOnly;
}

bool PreferencesViewModel::launchAtLogin() const
{
    return m_loginItem.isEnabled();
}

void PreferencesViewModel::setLaunchAtLogin(bool launch)
{
    const auto set = m_loginItem.setEnabled(launch);
    m_launchAtLoginFailure = set ? QString() : set.error();
    Q_EMIT launchAtLoginChanged();
}

void PreferencesViewModel::showSetupGuide() const
{
    m_windows.showOnboarding();
}

} // namespace tulvane
