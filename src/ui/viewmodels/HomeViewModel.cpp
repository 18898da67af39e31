#include <base/Clock.h>
#include <base/Translate.h>
#include <dictation/DictationController.h>
#include <dictation/DictationSession.h>
#include <hotkeys/KeyboardShortcuts.h>
#include <settings/AppSettings.h>
#include <stats/StatsStore.h>
#include <stats/StatsTexts.h>
#include <ui/viewmodels/CardList.h>
#include <ui/viewmodels/HomeViewModel.h>

namespace tulvane {

HomeViewModel::HomeViewModel(const UiContext& context, QObject* parent)
    : QObject(parent),
      m_context(context),
      m_recent(new HistoryViewModel(context, mostRecent, this)),
      m_notices(new HomeNotices(context, *m_recent, this))
{
    followStatus();
    followHotkey();
    followFigures();
    connect(&m_context.settings.hideSetupChecklist, &AnySetting::changed, this,
            &HomeViewModel::setupShownChanged);
    connect(&m_context.settings.hidePrivacyCard, &AnySetting::changed, this,
            &HomeViewModel::privacyShownChanged);
}

void HomeViewModel::followStatus()
{
    connect(&m_context.controller, &DictationController::phaseChanged, this, &HomeViewModel::statusChanged);
    connect(&m_context.controller, &DictationController::readinessChanged, this,
            &HomeViewModel::statusChanged);
    connect(&m_context.session, &DictationSession::modelLoadingChanged, this, &HomeViewModel::statusChanged);
}

void HomeViewModel::followHotkey()
{
    connect(&m_context.shortcuts, &KeyboardShortcuts::posted, this, &HomeViewModel::hotkeyChanged);
    connect(&m_context.shortcuts, &KeyboardShortcuts::registrationsChanged, this,
            &HomeViewModel::hotkeyChanged);
    connect(&m_context.settings.hotkeyMode, &AnySetting::changed, this, &HomeViewModel::hotkeyChanged);
    connect(&m_context.settings.modifierHotkey, &AnySetting::changed, this, &HomeViewModel::hotkeyChanged);
}

void HomeViewModel::followFigures()
{
    connect(&m_context.stats, &StatsStore::daysChanged, this, &HomeViewModel::cardsChanged);
    connect(&m_context.settings.typingWordsPerMinute, &AnySetting::changed, this,
            &HomeViewModel::cardsChanged);
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
    return greetingAt(m_context.clock.now().time().hour());
}

QString HomeViewModel::status() const
{
    switch (tone()) {
    case Tone::Recording:
        return translate("Listening…");
    case Tone::Working:
        return m_context.controller.phase().kind == Phase::Kind::inserting ? translate("Inserting…")
                                                                           : translate("Transcribing…");
    case Tone::Notice:
    case Tone::Error:
        return m_context.controller.phase().text;
    case Tone::Ready:
        return translate("Ready");
    case Tone::Loading:
        return translate("Loading model…");
    case Tone::Setup:
        return translate("Setup required");
    }
    Q_UNREACHABLE();
}

HomeViewModel::Tone HomeViewModel::tone() const
{
    switch (m_context.controller.phase().kind) {
    case Phase::Kind::recording:
        return Tone::Recording;
    case Phase::Kind::transcribing:
    case Phase::Kind::inserting:
        return Tone::Working;
    case Phase::Kind::notice:
        return Tone::Notice;
    case Phase::Kind::error:
        return Tone::Error;
    case Phase::Kind::idle:
        break;
    }
    if (!m_context.controller.isReady())
        return Tone::Setup;
    return m_context.session.isModelLoading() ? Tone::Loading : Tone::Ready;
}

QString HomeViewModel::hotkeyVerb() const
{
    return m_context.settings.hotkeyMode() == HotkeyMode::toggle ? translate("Press")
                                                                 : translate("Hold down");
}

QVariantList HomeViewModel::hotkeys() const
{
    QVariantList list;
    if (m_context.shortcuts.getShortcut(ShortcutName::dictate()))
        list.append(m_context.shortcuts.display(ShortcutName::dictate()).caps);
    if (const ModifierHotkey key = m_context.settings.modifierHotkey(); key != ModifierHotkey::none)
        list.append(QStringList{title(key)});
    return list;
}

QVariantList HomeViewModel::cards() const
{
    return cardList(homeCards(StatsSummary(m_context.stats), m_context.settings.typingWordsPerMinute(),
                              m_context.clock.now()),
                    {QStringLiteral("flame.fill"), QStringLiteral("gauge"), QStringLiteral("sum")});
}

bool HomeViewModel::showsSetup() const
{
    return !m_context.settings.hideSetupChecklist();
}

bool HomeViewModel::showsPrivacy() const
{
    return !m_context.settings.hidePrivacyCard();
}

void HomeViewModel::refresh()
{
    m_recent->refresh();
    Q_EMIT refreshed();
    Q_EMIT cardsChanged();
}

void HomeViewModel::hidePrivacy()
{
    m_context.settings.hidePrivacyCard.set(true);
}

} // namespace tulvane
