#include <base/Translate.h>
#include <dictation/DictationController.h>
#include <dictation/DictationSession.h>
#include <dictation/Indicator.h>
#include <ports/Pasteboard.h>
#include <settings/AppSettings.h>
#include <ui/menubar/MenuBarCommands.h>
#include <ui/menubar/MenuLines.h>

#include <QTextBoundaryFinder>

#include <algorithm>
#include <utility>

namespace tulvane {

namespace {

using Kind = MenuEntry::Kind;

/// A submenu that shows one of an enumeration's values as chosen, and chooses.
template <class E>
MenuEntry switchOf(const char* name, const QString& text, E chosen, const std::function<void(E)>& choose)
{
    MenuEntry menu = menuLine(Kind::submenu, name, text);
    for (const E value : allCases<E>())
        menu.entries.append({.kind = Kind::choice,
                             .name = rawValue(value),
                             .text = title(value),
                             .isChecked = value == chosen,
                             .activate = [choose, value] { choose(value); }});
    return menu;
}

} // namespace

MenuBarCommands::MenuBarCommands(DictationController& controller, const DictationSession& session,
                                 AppSettings& settings, Pasteboards& pasteboards, Windows& windows,
                                 std::function<void()> quit, QObject* parent)
    : QObject(parent),
      m_controller(controller),
      m_session(session),
      m_settings(settings),
      m_pasteboards(pasteboards),
      m_windows(windows),
      m_quit(std::move(quit))
{
    connect(&controller, &DictationController::phaseChanged, this, &MenuBarCommands::changed);
    connect(&controller, &DictationController::sessionChanged, this, &MenuBarCommands::changed);
    connect(&settings.hotkeyMode, &AnySetting::changed, this, &MenuBarCommands::changed);
    connect(&settings.language, &AnySetting::changed, this, &MenuBarCommands::changed);
}

QList<MenuEntry> MenuBarCommands::entries() const
{
    QList<MenuEntry> menu;
    appendTranscript(menu);
    appendCommands(menu);
    appendSwitches(menu);
    appendWindows(menu);
    return menu;
}

QString MenuBarCommands::shortened(const QString& text)
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

void MenuBarCommands::appendTranscript(QList<MenuEntry>& menu) const
{
    const QString transcript = m_session.lastTranscript();
    if (transcript.isEmpty())
        return;
    menu.append(
        menuLine(Kind::action, "lastTranscript", shortened(transcript), [this] { copyLastTranscript(); }));
    menu.append(menuSeparator("afterTranscript"));
}

void MenuBarCommands::appendCommands(QList<MenuEntry>& menu) const
{
    DictationController& controller = m_controller;
    if (controller.phase().kind == Phase::Kind::recording) {
        menu.append(menuLine(Kind::action, "dictate", translate("Stop dictation"),
                             [&controller] { controller.stop(); }));
        menu.append(menuLine(Kind::action, "cancel", translate("Cancel recording"),
                             [&controller] { controller.cancel(); }));
    } else {
        menu.append(menuLine(Kind::action, "dictate", translate("Start dictation"),
                             [&controller] { controller.start(); }));
    }
    menu.append(menuSeparator("afterCommands"));
}

void MenuBarCommands::appendSwitches(QList<MenuEntry>& menu) const
{
    AppSettings& settings = m_settings;
    menu.append(switchOf<HotkeyMode>("hotkeyMode", translate("Hotkey mode"), settings.hotkeyMode(),
                                     [&settings](HotkeyMode chosen) { settings.hotkeyMode.set(chosen); }));
    menu.append(switchOf<TranscriptionLanguage>(
        "language", translate("Language"), settings.language(),
        [&settings](TranscriptionLanguage chosen) { settings.language.set(chosen); }));
    menu.append(menuSeparator("afterSwitches"));
}

void MenuBarCommands::appendWindows(QList<MenuEntry>& menu) const
{
    Windows* const windows = &m_windows;
    const auto page = [&menu, windows](const char* name, const QString& text, SettingsTab tab) {
        menu.append(menuLine(Kind::action, name, text, [windows, tab] { windows->showPage(tab); }));
    };
    page("open", translate("Open Tulvane"), SettingsTab::home);
    page("statistics", translate("Statistics"), SettingsTab::statistics);
    page("settings", translate("Settings"), SettingsTab::settings);
    menu.append(
        menuLine(Kind::action, "setup", translate("Setup guide"), [windows] { windows->showOnboarding(); }));
    menu.append(menuSeparator("afterWindows"));
    menu.append(menuLine(Kind::action, "quit", translate("Quit Tulvane"), m_quit));
}

void MenuBarCommands::copyLastTranscript() const
{
    // The whole text, as it was inserted: the line shows only its beginning.
    m_pasteboards.general().replace({PasteboardItem::text(m_session.lastTranscript())});
}

} // namespace tulvane
