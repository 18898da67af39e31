#include <dictation/Indicator.h>
#include <platform/LoginItem.h>
#include <settings/AppSettings.h>
#include <ui/models/PreferencesModel.h>

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

PreferencesModel::PreferencesModel(const UiContext& context, QObject* parent)
    : QObject(parent),
      m_context(context)
{
    const AppSettings& settings = context.settings;
    connect(&settings, &AppSettings::languageChanged, this, &PreferencesModel::languageChanged);
    connect(&settings, &AppSettings::insertionMethodChanged, this, &PreferencesModel::insertionMethodChanged);
    connect(&settings, &AppSettings::appearanceChanged, this, &PreferencesModel::appearanceChanged);
    connect(&settings, &AppSettings::appLanguageChanged, this, &PreferencesModel::appLanguageChanged);
    connect(&settings, &AppSettings::writeFailed, this, [this](const QString&, const DefaultsError& error) {
        m_storageFailure = error.description();
        Q_EMIT storageFailureChanged();
    });
}

QObject* PreferencesModel::settings() const
{
    return &m_context.settings;
}

QVariantList PreferencesModel::languages()
{
    return optionsOf<TranscriptionLanguage>();
}

QString PreferencesModel::language() const
{
    return rawValue(m_context.settings.language());
}

void PreferencesModel::setLanguage(const QString& value)
{
    if (const auto language = fromRawValue<TranscriptionLanguage>(value))
        m_context.settings.setLanguage(*language);
}

QVariantList PreferencesModel::insertionMethods()
{
    return optionsOf<InsertionMethod>();
}

QString PreferencesModel::insertionMethod() const
{
    return rawValue(m_context.settings.insertionMethod());
}

void PreferencesModel::setInsertionMethod(const QString& value)
{
    if (const auto method = fromRawValue<InsertionMethod>(value))
        m_context.settings.setInsertionMethod(*method);
}

QVariantList PreferencesModel::appearances()
{
    return optionsOf<AppearanceMode>();
}

QString PreferencesModel::appearance() const
{
    return rawValue(m_context.settings.appearance());
}

void PreferencesModel::setAppearance(const QString& value)
{
    if (const auto mode = fromRawValue<AppearanceMode>(value))
        m_context.settings.setAppearance(*mode);
}

QVariantList PreferencesModel::appLanguages()
{
    // English first, each in its own words: whoever cannot read the one finds the other.
    return {QVariantMap{{QStringLiteral("value"), rawValue(AppLanguage::english)},
                        {QStringLiteral("title"), QStringLiteral("English")}},
            QVariantMap{{QStringLiteral("value"), rawValue(AppLanguage::norwegian)},
                        {QStringLiteral("title"), QStringLiteral("Norsk")}}};
}

QString PreferencesModel::appLanguage() const
{
    return rawValue(m_context.settings.appLanguage());
}

void PreferencesModel::setAppLanguage(const QString& value)
{
    const auto language = fromRawValue<AppLanguage>(value);
    if (!language || *language == m_context.settings.appLanguage())
        return;
    m_context.settings.setAppLanguage(*language);
    m_context.relaunch();
}

bool PreferencesModel::pastes() const
{
    return m_context.settings.insertionMethod() != InsertionMethod::clipboardOnly;
}

bool PreferencesModel::launchAtLogin() const
{
    return m_context.loginItem.isEnabled();
}

void PreferencesModel::setLaunchAtLogin(bool launch)
{
    const auto set = m_context.loginItem.setEnabled(launch);
    m_launchAtLoginFailure = set ? QString() : set.error();
    Q_EMIT launchAtLoginChanged();
}

void PreferencesModel::showSetupGuide() const
{
    m_context.windows->showOnboarding();
}

} // namespace tulvane
