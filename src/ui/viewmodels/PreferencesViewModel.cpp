#include <dictation/Indicator.h>
#include <ports/LoginItem.h>
#include <ports/StatusItem.h>
#include <settings/AppSettings.h>
#include <ui/viewmodels/PreferencesViewModel.h>
#include <ui/viewmodels/SettingValues.h>
#include <ui/viewmodels/TransferRate.h>

#include <QQmlPropertyMap>

namespace tulvane {

namespace {

/// Each language in its own words, and English first, which a reader of no offered language is likeliest to
/// know.
class AppLanguageChoice final : public ChoiceViewModel {
public:
    using ChoiceViewModel::ChoiceViewModel;

private:
    [[nodiscard]] QList<SettingChoice> choices() const override
    {
        QList<SettingChoice> choices;
        for (const AppLanguage language : allCases<AppLanguage>())
            choices.insert(language == AppLanguage::english ? 0 : choices.size(),
                           SettingChoice{rawValue(language), untranslatedTitle(language)});
        return choices;
    }
};

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
      m_language(new ChoiceViewModel(settings.language, this)),
      m_insertionMethod(new ChoiceViewModel(settings.insertionMethod, this)),
      m_appearance(new ChoiceViewModel(settings.appearance, this)),
      m_appLanguage(new AppLanguageChoice(settings.appLanguage, this, std::move(relaunch))),
      m_quit(std::move(quit))
{
    m_shownLaunchAtLogin = loginItem.isEnabled();
    m_statusItem.setShownHandler([this] { Q_EMIT hasStatusIconChanged(); });
    connect(m_insertionMethod, &ChoiceViewModel::valueChanged, this, &PreferencesViewModel::pastesChanged);
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
    m_shownLaunchAtLogin = m_loginItem.isEnabled();
    Q_EMIT launchAtLoginChanged();
}

QString PreferencesViewModel::inMinutes(int seconds) const
{
    return seconds < 60 ? QString() : durationText(std::chrono::seconds(seconds));
}

void PreferencesViewModel::refresh()
{
    if (std::exchange(m_shownLaunchAtLogin, m_loginItem.isEnabled()) != m_loginItem.isEnabled())
        Q_EMIT launchAtLoginChanged();
}

void PreferencesViewModel::showSetupGuide() const
{
    m_windows.showOnboarding();
}

} // namespace tulvane
