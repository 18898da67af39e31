#include <base/Clock.h>
#include <base/Translate.h>
#include <dictation/DictationController.h>
#include <dictation/Indicator.h>
#include <hotkeys/HotkeyController.h>
#include <hotkeys/KeyboardShortcuts.h>
#include <models/ModelManager.h>
#include <permissions/PermissionsService.h>
#include <settings/AppSettings.h>
#include <stats/SpeakingFigures.h>
#include <stats/StatsFormat.h>
#include <stats/StatsStore.h>
#include <stats/StatsSummary.h>
#include <ui/menubar/MenuBarMenu.h>

#include <QMetaObject>
#include <QTextBoundaryFinder>

#include <ports/Pasteboard.h>

#include <algorithm>
#include <utility>

namespace tulvane {

namespace {

using Kind = MenuEntry::Kind;

MenuEntry line(Kind kind, const char* name, const QString& text, std::function<void()> activate = {})
{
    return {.kind = kind, .name = QString::fromLatin1(name), .text = text, .activate = std::move(activate)};
}

MenuEntry separator(const char* name)
{
    return line(Kind::separator, name, {});
}

/// A submenu that shows one of an enumeration's values as chosen, and chooses.
template <class E>
MenuEntry switchOf(const char* name, const QString& text, E chosen, const std::function<void(E)>& choose)
{
    MenuEntry menu = line(Kind::submenu, name, text);
    for (const E value : allCases<E>())
        menu.entries.append({.kind = Kind::choice,
                             .name = rawValue(value),
                             .text = title(value),
                             .isChecked = value == chosen,
                             .activate = [choose, value] { choose(value); }});
    return menu;
}

} // namespace

MenuBarMenu::MenuBarMenu(const UiContext& context, StatusItem& item, std::function<void()> quit)
    : m_context(context),
      m_item(item),
      m_quit(std::move(quit))
{
    // Today becomes yesterday without anybody telling, and the command line counts on its own.
    m_item.setOpeningHandler([this] {
        m_context.stats.refresh();
        update();
    });
    follow();
    update();
}

void MenuBarMenu::follow()
{
    const auto change = &MenuBarMenu::noteChange;
    connect(&m_context.controller, &DictationController::phaseChanged, this, change);
    connect(&m_context.controller, &DictationController::sessionChanged, this, change);
    connect(&m_context.stats, &StatsStore::daysChanged, this, change);
    connect(&m_context.models, &ModelManager::stateChanged, this, change);
    connect(&m_context.permissions, &PermissionsService::microphoneChanged, this, change);
    connect(&m_context.hotkeys, &HotkeyController::modifierTapStateChanged, this, change);
    connect(&m_context.shortcuts, &KeyboardShortcuts::posted, this, change);
    connect(&m_context.shortcuts, &KeyboardShortcuts::registrationsChanged, this, change);
    connect(&m_context.settings.hotkeyMode, &AnySetting::changed, this, change);
    connect(&m_context.settings.language, &AnySetting::changed, this, change);
    connect(&m_context.settings.modifierHotkey, &AnySetting::changed, this, change);
    connect(&m_context.settings.selectedModelID, &AnySetting::changed, this, change);
    connect(&m_context.settings.typingWordsPerMinute, &AnySetting::changed, this, change);
}

void MenuBarMenu::noteChange()
{
    if (!std::exchange(m_isNoted, true))
        QMetaObject::invokeMethod(this, &MenuBarMenu::update, Qt::QueuedConnection);
}

void MenuBarMenu::update()
{
    m_isNoted = false;
    // A desktop is told over its bus: only of what is new.
    if (const QString now = symbol(); std::exchange(m_shownSymbol, now) != now)
        m_item.setSymbol(now);
    const QString description = translate("Tulvane") + QStringLiteral(" – ") + statusLine();
    if (std::exchange(m_shownDescription, description) != description)
        m_item.setDescription(description);
    if (const QList<MenuEntry> now = entries(); std::exchange(m_shown, now) != now)
        m_item.setMenu(now);
}

QString MenuBarMenu::symbol() const
{
    switch (m_context.controller.phase().kind) {
    case Phase::Kind::idle:
    case Phase::Kind::notice:
        return QStringLiteral("mic");
    case Phase::Kind::error:
        return QStringLiteral("mic.slash");
    case Phase::Kind::recording:
        return QStringLiteral("mic.fill");
    case Phase::Kind::transcribing:
    case Phase::Kind::inserting:
        return QStringLiteral("waveform");
    }
    Q_UNREACHABLE();
}

bool MenuBarMenu::isSetUp() const
{
    const WhisperModel model =
        WhisperModel::find(m_context.settings.selectedModelID()).value_or(WhisperModel::fallback());
    return m_context.permissions.microphone() == MicrophoneAccess::authorized &&
           m_context.models.isDownloaded(model);
}

QString MenuBarMenu::statusLine() const
{
    const Phase& phase = m_context.controller.phase();
    switch (phase.kind) {
    case Phase::Kind::notice:
        return phase.firstLine();
    case Phase::Kind::error:
        return translate("Error: %1").arg(phase.firstLine());
    case Phase::Kind::recording:
        return translate("Listening…");
    case Phase::Kind::transcribing:
        return translate("Transcribing…");
    case Phase::Kind::inserting:
        return translate("Inserting…");
    case Phase::Kind::idle:
        break;
    }
    if (!isSetUp())
        return translate("Setup required");
    if (m_context.session.isModelLoading())
        return translate("Loading model…");
    return translate("Ready · %1").arg(m_context.hotkeys.hotkeyDescription());
}

std::optional<QString> MenuBarMenu::todayLine() const
{
    const PeriodTotals today =
        StatsSummary(m_context.stats).totals(StatsPeriod::today, m_context.clock.now());
    if (today.words < 1)
        return std::nullopt;
    const double saved =
        savedSeconds(today.words, today.speechSeconds, m_context.settings.typingWordsPerMinute());
    return translate("Today: %1 words · ~%2 saved").arg(formatCount(today.words), formatDuration(saved));
}

QString MenuBarMenu::shortened(const QString& text)
{
    // The blank that is to stand before the next sentence is none of this one's characters.
    qsizetype length = text.size();
    while (length > 0 && text[length - 1].isSpace())
        --length;
    const QString whole = text.left(length);
    QTextBoundaryFinder characters(QTextBoundaryFinder::Grapheme, whole);
    qsizetype end = 0;
    for (qsizetype i = 0; i < mostCharacters && end >= 0; ++i)
        end = characters.toNextBoundary();
    QString line = end < 0 || end >= whole.size() ? whole : whole.left(end) + u'…';
    std::ranges::replace_if(
        line, [](QChar c) { return c.isSpace() || c.category() == QChar::Other_Control; }, QChar(u' '));
    return line;
}

QList<MenuEntry> MenuBarMenu::entries() const
{
    QList<MenuEntry> menu;
    appendReport(menu);
    appendCommands(menu);
    appendSwitches(menu);
    appendWindows(menu);
    return menu;
}

void MenuBarMenu::appendReport(QList<MenuEntry>& menu) const
{
    menu.append(line(Kind::label, "status", statusLine()));
    if (const auto today = todayLine())
        menu.append(line(Kind::label, "today", *today));
    menu.append(separator("afterReport"));
    const QString transcript = m_context.session.lastTranscript();
    if (transcript.isEmpty())
        return;
    menu.append(
        line(Kind::action, "lastTranscript", shortened(transcript), [this] { copyLastTranscript(); }));
    menu.append(separator("afterTranscript"));
}

void MenuBarMenu::appendCommands(QList<MenuEntry>& menu) const
{
    DictationController& controller = m_context.controller;
    if (controller.phase().kind == Phase::Kind::recording) {
        menu.append(
            line(Kind::action, "dictate", translate("Stop dictation"), [&controller] { controller.stop(); }));
        menu.append(line(Kind::action, "cancel", translate("Cancel recording"),
                         [&controller] { controller.cancel(); }));
    } else {
        menu.append(line(Kind::action, "dictate", translate("Start dictation"),
                         [&controller] { controller.start(); }));
    }
    menu.append(separator("afterCommands"));
}

void MenuBarMenu::appendSwitches(QList<MenuEntry>& menu) const
{
    AppSettings& settings = m_context.settings;
    menu.append(switchOf<HotkeyMode>("hotkeyMode", translate("Hotkey mode"), settings.hotkeyMode(),
                                     [&settings](HotkeyMode chosen) { settings.hotkeyMode.set(chosen); }));
    menu.append(switchOf<TranscriptionLanguage>(
        "language", translate("Language"), settings.language(),
        [&settings](TranscriptionLanguage chosen) { settings.language.set(chosen); }));
    menu.append(separator("afterSwitches"));
}

void MenuBarMenu::appendWindows(QList<MenuEntry>& menu) const
{
    Windows* const windows = m_context.windows;
    const auto page = [&menu, windows](const char* name, const QString& text, SettingsTab tab) {
        menu.append(line(Kind::action, name, text, [windows, tab] { windows->showPage(tab); }));
    };
    page("open", translate("Open Tulvane"), SettingsTab::home);
    page("statistics", translate("Statistics"), SettingsTab::statistics);
    page("settings", translate("Settings"), SettingsTab::settings);
    menu.append(
        line(Kind::action, "setup", translate("Setup guide"), [windows] { windows->showOnboarding(); }));
    menu.append(separator("afterWindows"));
    menu.append(line(Kind::action, "quit", translate("Quit Tulvane"), m_quit));
}

void MenuBarMenu::copyLastTranscript() const
{
    // The whole text, as it was inserted: the line shows only its beginning.
    m_context.pasteboards.general().replace({PasteboardItem::text(m_context.session.lastTranscript())});
}

} // namespace tulvane
