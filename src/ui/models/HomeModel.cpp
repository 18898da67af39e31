#include <base/Clock.h>
#include <base/Translate.h>
#include <dictation/DictationController.h>
#include <dictation/DictationSession.h>
#include <hotkeys/KeyboardShortcuts.h>
#include <settings/AppSettings.h>
#include <stats/StatsStore.h>
#include <stats/StatsTexts.h>
#include <ui/models/CardList.h>
#include <ui/models/HomeModel.h>

namespace tulvane {

HomeModel::HomeModel(const UiContext& context, QObject* parent)
    : QObject(parent),
      m_context(context),
      m_recent(new HistoryModel(context, mostRecent, this)),
      m_notices(new HomeNotices(context, *m_recent, this))
{
    followStatus();
    followHotkey();
    followFigures();
    connect(&m_context.settings, &AppSettings::hideSetupChecklistChanged, this,
            &HomeModel::setupShownChanged);
    connect(&m_context.settings, &AppSettings::hidePrivacyCardChanged, this, &HomeModel::privacyShownChanged);
}

void HomeModel::followStatus()
{
    connect(&m_context.controller, &DictationController::phaseChanged, this, &HomeModel::statusChanged);
    connect(&m_context.controller, &DictationController::readinessChanged, this, &HomeModel::statusChanged);
    connect(&m_context.session, &DictationSession::modelLoadingChanged, this, &HomeModel::statusChanged);
}

void HomeModel::followHotkey()
{
    connect(&m_context.shortcuts, &KeyboardShortcuts::posted, this, &HomeModel::hotkeyChanged);
    connect(&m_context.shortcuts, &KeyboardShortcuts::registrationsChanged, this, &HomeModel::hotkeyChanged);
    connect(&m_context.settings, &AppSettings::hotkeyModeChanged, this, &HomeModel::hotkeyChanged);
    connect(&m_context.settings, &AppSettings::modifierHotkeyChanged, this, &HomeModel::hotkeyChanged);
}

void HomeModel::followFigures()
{
    connect(&m_context.stats, &StatsStore::daysChanged, this, &HomeModel::cardsChanged);
    connect(&m_context.settings, &AppSettings::typingWordsPerMinuteChanged, this, &HomeModel::cardsChanged);
}

QString HomeModel::greetingAt(int hour)
{
    if (hour >= 5 && hour <= 11)
        return translate("Good morning");
    if (hour >= 12 && hour <= 17)
        return translate("Good afternoon");
    return translate("Good evening");
}

QString HomeModel::greeting() const
{
    return greetingAt(m_context.clock.now().time().hour());
}

QString HomeModel::status() const
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

HomeModel::Tone HomeModel::tone() const
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

QString HomeModel::hotkeyVerb() const
{
    return m_context.settings.hotkeyMode() == HotkeyMode::toggle ? translate("Press")
                                                                 : translate("Hold down");
}

QVariantList HomeModel::hotkeys() const
{
    QVariantList list;
    if (m_context.shortcuts.getShortcut(ShortcutName::dictate()))
        list.append(m_context.shortcuts.display(ShortcutName::dictate()).caps);
    if (const ModifierHotkey key = m_context.settings.modifierHotkey(); key != ModifierHotkey::none)
        list.append(QStringList{title(key)});
    return list;
}

QVariantList HomeModel::cards() const
{
    return cardList(homeCards(StatsSummary(m_context.stats), m_context.settings.typingWordsPerMinute(),
                              m_context.clock.now()),
                    {QStringLiteral("flame.fill"), QStringLiteral("gauge"), QStringLiteral("sum")});
}

bool HomeModel::showsSetup() const
{
    return !m_context.settings.hideSetupChecklist();
}

bool HomeModel::showsPrivacy() const
{
    return !m_context.settings.hidePrivacyCard();
}

void HomeModel::refresh()
{
    m_recent->refresh();
    Q_EMIT refreshed();
    Q_EMIT cardsChanged();
}

void HomeModel::hidePrivacy()
{
    m_context.settings.setHidePrivacyCard(true);
}

} // namespace tulvane
