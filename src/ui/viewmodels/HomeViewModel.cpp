#include <base/Clock.h>
#include <base/Translate.h>
#include <settings/AppSettings.h>
#include <stats/StatsStore.h>
#include <stats/StatsTexts.h>
#include <ui/viewmodels/CardList.h>
#include <ui/viewmodels/HistoryViewModel.h>
#include <ui/viewmodels/HomeViewModel.h>
#include <ui/viewmodels/HotkeyStatus.h>

namespace tulvane {

HomeViewModel::HomeViewModel(const DictationStatus& status, const HotkeyStatus& hotkey, AppSettings& settings,
                             const StatsStore& stats, const Clock& clock, HistoryViewModel& recent,
                             QObject* parent)
    : QObject(parent),
      m_status(status),
      m_hotkey(hotkey),
      m_settings(settings),
      m_stats(stats),
      m_clock(clock),
      m_recent(recent)
{
    connect(&status, &DictationStatus::changed, this, &HomeViewModel::statusChanged);
    connect(&hotkey, &HotkeyStatus::changed, this, &HomeViewModel::hotkeyChanged);
    connect(&stats, &StatsStore::daysChanged, this, &HomeViewModel::cardsChanged);
    connect(&settings.typingWordsPerMinute, &AnySetting::changed, this, &HomeViewModel::cardsChanged);
    connect(&settings.hideSetupChecklist, &AnySetting::changed, this, &HomeViewModel::setupShownChanged);
    connect(&settings.hidePrivacyCard, &AnySetting::changed, this, &HomeViewModel::privacyShownChanged);
}

QString HomeViewModel::greetingAt(int hour)
{
    if (hour >= 5 && hour <= 11)
        return translate("Good morning");
    if (hour >= 12 && hour <= 17)
        return translate("Good afternoon");
    return translate("Good evening");
}

QString HomeViewModel::greeting() const
{
    return greetingAt(m_clock.now().time().hour());
}

QString HomeViewModel::status() const
{
    return m_status.text();
}

DictationStatus::Kind HomeViewModel::tone() const
{
    return m_status.kind();
}

QString HomeViewModel::hotkeyVerb() const
{
    return m_hotkey.verb();
}

QVariantList HomeViewModel::hotkeys() const
{
    QVariantList list;
    for (const QStringList& caps : m_hotkey.caps())
        list.append(caps);
    return list;
}

QVariantList HomeViewModel::cards() const
{
    return cardList(homeCards(StatsSummary(m_stats), m_settings.typingWordsPerMinute(), m_clock.now()),
                    {QStringLiteral("flame.fill"), QStringLiteral("gauge"), QStringLiteral("sum")});
}

bool HomeViewModel::showsSetup() const
{
    return !m_settings.hideSetupChecklist();
}

bool HomeViewModel::showsPrivacy() const
{
    return !m_settings.hidePrivacyCard();
}

void HomeViewModel::refresh()
{
    m_shownGreeting = greeting();
    m_shownDay = m_clock.now().date();
    m_recent.refresh();
    Q_EMIT refreshed();
    Q_EMIT cardsChanged();
}

void HomeViewModel::followClock()
{
    if (m_shownGreeting != greeting() || m_shownDay != m_clock.now().date())
        refresh();
}

void HomeViewModel::hidePrivacy()
{
    m_settings.hidePrivacyCard.set(true);
}

} // namespace tulvane
