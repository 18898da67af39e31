#include <insertion/PasteTable.h>

#include <QRegularExpression>

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace tulvane {

namespace {

/// These paste with Ctrl+Shift+V, as every terminal built on VTE does, and most others.
constexpr const char* withControlShiftV[] = {"gnome-terminal-server",
                                             "gnome-terminal",
                                             "org.gnome.ptyxis",
                                             "ptyxis",
                                             "kgx",
                                             "org.gnome.console",
                                             "mate-terminal",
                                             "xfce4-terminal",
                                             "lxterminal",
                                             "tilix",
                                             "terminator",
                                             "guake",
                                             "sakura",
                                             "roxterm",
                                             "terminology",
                                             "tilda",
                                             "io.elementary.terminal",
                                             "deepin-terminal",
                                             "konsole",
                                             "yakuake",
                                             "qterminal",
                                             "alacritty",
                                             "kitty",
                                             "foot",
                                             "wezterm",
                                             "org.wezfurlong.wezterm",
                                             "com.mitchellh.ghostty",
                                             "ghostty",
                                             "st-256color",
                                             "hyper",
                                             "tabby",
                                             "contour",
                                             "rio",
                                             "vte-terminal",
                                             "cool-retro-term"};

/// These know no paste from the clipboard out of the box.
constexpr const char* withShiftInsert[] = {"xterm", "uxterm", "urxvt", "rxvt", "mlterm"};

PasteRules knownRules()
{
    PasteRules rules;
    for (const char* name : withControlShiftV)
        rules.append({QString::fromUtf8(name), PasteChord::controlShiftV, PasteSelection::clipboard});
    for (const char* name : withShiftInsert)
        rules.append({QString::fromUtf8(name), PasteChord::shiftInsert, PasteSelection::primary});
    // Ctrl+V scrolls there.
    rules.append(
        {QStringLiteral("emacs"), PasteChord::controlY, PasteSelection::clipboard, PasteLineBreaks::kept});
    return rules;
}

std::optional<PasteChord> chordNamed(const QString& text)
{
    static const QRegularExpression form(
        QStringLiteral("^((?:(?:ctrl|shift|alt|super)\\+)*)([a-z0-9]|insert|f(?:[1-9]|1[0-2]))$"));
    const auto match = form.match(text);
    if (!match.hasMatch())
        return std::nullopt;
    PasteChord chord{0, match.captured(2)};
    const QStringList modifiers = match.captured(1).split(u'+', Qt::SkipEmptyParts);
    for (const auto& [name, modifier] :
         std::array{std::pair("ctrl", PasteChord::control), std::pair("shift", PasteChord::shift),
                    std::pair("alt", PasteChord::alt), std::pair("super", PasteChord::super)}) {
        if (modifiers.contains(QLatin1StringView(name)))
            chord.modifiers |= modifier;
    }
    // A letter by itself, or with Shift, is typed.
    const bool isTyped = chord.key.size() == 1 && (chord.modifiers & ~PasteChord::shift) == 0;
    return isTyped ? std::nullopt : std::optional(chord);
}

PasteLineBreaks lineBreaksOf(const QString& windowClass)
{
    const PasteRules known = knownRules();
    const auto rule = std::ranges::find_if(known, [&](const PasteRule& one) {
        return one.windowClass.compare(windowClass, Qt::CaseInsensitive) == 0;
    });
    return rule == known.end() ? PasteLineBreaks::asSpaces : rule->lineBreaks;
}

std::optional<PasteRule> parsed(const QString& entry)
{
    const qsizetype separator = entry.lastIndexOf(u'=');
    const QString name = (separator < 0 ? entry : entry.left(separator)).trimmed();
    QString keys = separator < 0 ? QStringLiteral("ctrl+shift+v") : entry.mid(separator + 1).toLower();
    keys.remove(u' ');
    const qsizetype colon = keys.indexOf(u':');
    const auto chord = chordNamed(keys.mid(colon + 1));
    if (name.isEmpty() || !chord)
        return std::nullopt;
    PasteSelection selection =
        *chord == PasteChord::shiftInsert ? PasteSelection::primary : PasteSelection::clipboard;
    if (colon >= 0) {
        const QString from = keys.left(colon);
        if (from != u"primary" && from != u"clipboard")
            return std::nullopt;
        selection = from == u"primary" ? PasteSelection::primary : PasteSelection::clipboard;
    }
    return PasteRule{name, *chord, selection, lineBreaksOf(name)};
}

std::optional<PasteRule> parsed(const QVariant& entry)
{
    return entry.typeId() == QMetaType::QString ? parsed(entry.toString()) : std::nullopt;
}

/// A text would pass for a list of its letters.
bool isList(const QVariant& value)
{
    return value.typeId() == QMetaType::QVariantList || value.typeId() == QMetaType::QStringList;
}

} // namespace

PasteRules pasteTable(const QVariant& terminalWindowClasses)
{
    PasteRules rules;
    const QVariantList entries =
        isList(terminalWindowClasses) ? terminalWindowClasses.toList() : QVariantList();
    for (const QVariant& entry : entries) {
        if (const auto rule = parsed(entry))
            rules.append(*rule);
    }
    return rules + knownRules();
}

QStringList pasteTableProblems(const QVariant& terminalWindowClasses)
{
    if (!terminalWindowClasses.isValid())
        return {};
    const QString key = terminalWindowClassesKey;
    if (!isList(terminalWindowClasses))
        return {QStringLiteral("%1 is no list of texts.").arg(key)};
    QStringList problems;
    for (const QVariant& entry : terminalWindowClasses.toList()) {
        if (!parsed(entry))
            problems.append(
                QStringLiteral("%1: “%2” names no window class and paste chord.").arg(key, entry.toString()));
    }
    return problems;
}

} // namespace tulvane
