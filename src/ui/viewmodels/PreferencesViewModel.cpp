#include <dictation/Indicator.h>
#include <settings/AppSettings.h>
#include <ui/viewmodels/PreferencesViewModel.h>

#include <ports/LoginItem.h>

namespace tulvane {

namespace {

template <StoredEnumeration E>
QVariantList optionsOf()
{
    QVariantList options;
    for (const E value : allCases<E>())
        options.append(
            QVariantMap{{QStringLiteral("value"), rawValue(value)}, {QStringLiteral("title"), title(value)}});
    return options;
}

} // namespace

PreferencesViewModel::PreferencesViewModel(AppSettings& settings, LoginItem& loginItem, Windows& windows,
                                           std::function<void()> relaunch, QObject* parent)
    : QObject(parent),
      m_settings(settings),
      m_loginItem(loginItem),
      m_windows(windows),
      m_relaunch(std::move(relaunch))
{
    connect(&settings, &AppSettings::languageChanged, this, &PreferencesViewModel::languageChanged);
    connect(&settings, &AppSettings::insertionMethodChanged, this,
            &PreferencesViewModel::insertionMethodChanged);
    connect(&settings, &AppSettings::appearanceChanged, this, &PreferencesViewModel::appearanceChanged);
    connect(&settings, &AppSettings::appLanguageChanged, this, &PreferencesViewModel::appLanguageChanged);
    connect(&settings, &AppSettings::writeFailed, this, [this](const QString&, const DefaultsError& error) {
        m_storageFailure = error.description();
        Q_EMIT storageFailureChanged();
    });
}

QObject* PreferencesViewModel::settings() const
{
    return &m_settings;
}

QVariantList PreferencesViewModel::languages()
{
    return optionsOf<TranscriptionLanguage>();
}

QString PreferencesViewModel::language() const
{
    return rawValue(m_settings.language());
}

void PreferencesViewModel::setLanguage(const QString& value)
{
    if (const auto language = fromRawValue<TranscriptionLanguage>(value))
        m_settings.setLanguage(*language);
}

QVariantList PreferencesViewModel::insertionMethods()
{
    return optionsOf<InsertionMethod>();
}

QString PreferencesViewModel::insertionMethod() const
{
    return rawValue(m_settings.insertionMethod());
}

void PreferencesViewModel::setInsertionMethod(const QString& value)
{
    if (const auto method = fromRawValue<InsertionMethod>(value))
        m_settings.setInsertionMethod(*method);
}

QVariantList PreferencesViewModel::appearances()
{
    return optionsOf<AppearanceMode>();
}

QString PreferencesViewModel::appearance() const
{
    return rawValue(m_settings.appearance());
}

void PreferencesViewModel::setAppearance(const QString& value)
{
    if (const auto mode = fromRawValue<AppearanceMode>(value))
        m_settings.setAppearance(*mode);
}

QVariantList PreferencesViewModel::appLanguages()
{
    // English first, each in its own words: a user who cannot read the one finds the other.
    return {QVariantMap{{QStringLiteral("value"), rawValue(AppLanguage::english)},
                        {QStringLiteral("title"), QStringLiteral("English")}},
            QVariantMap{{QStringLiteral("value"), rawValue(AppLanguage::norwegian)},
                        {QStringLiteral("title"), QStringLiteral("Norsk")}}};
}

QString PreferencesViewModel::appLanguage() const
{
    return rawValue(m_settings.appLanguage());
}

void PreferencesViewModel::setAppLanguage(const QString& value)
{
    const auto language = fromRawValue<AppLanguage>(value);
    if (!language || *language == m_settings.appLanguage())
        return;
    m_settings.setAppLanguage(*language);
    m_relaunch();
}

bool PreferencesViewModel::pastes() const
{
    return m_settings.insertionMethod() != InsertionMethod::clipboardOnly;
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
