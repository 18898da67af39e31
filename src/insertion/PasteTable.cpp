#include <insertion/PasteTable.h>

#include <optional>

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
                                             "vte-terminal"};

/// These know no paste from the clipboard out of the box.
constexpr const char* withShiftInsert[] = {"xterm", "uxterm", "urxvt", "rxvt", "mlterm"};

TerminalTable knownTerminals()
{
    TerminalTable table;
    for (const char* name : withControlShiftV)
        table.append({QString::fromUtf8(name), PasteChord::controlShiftV, PasteSelection::clipboard});
    for (const char* name : withShiftInsert)
        table.append({QString::fromUtf8(name), PasteChord::shiftInsert, PasteSelection::primary});
    return table;
}

std::optional<TerminalWindow> parsed(const QString& entry)
{
    const qsizetype separator = entry.lastIndexOf(u'=');
    const QString name = (separator < 0 ? entry : entry.left(separator)).trimmed();
    const QString keys = separator < 0 ? QString() : entry.mid(separator + 1).trimmed().toLower();
    if (name.isEmpty())
        return std::nullopt;
    if (separator < 0 || keys == u"ctrl+shift+v")
        return TerminalWindow{name, PasteChord::controlShiftV, PasteSelection::clipboard};
    if (keys == u"ctrl+v")
        return TerminalWindow{name, PasteChord::controlV, PasteSelection::clipboard};
    if (keys == u"shift+insert")
        return TerminalWindow{name, PasteChord::shiftInsert, PasteSelection::primary};
    return std::nullopt;
}

} // namespace

TerminalTable pasteTable(const QVariant& terminalWindowClasses)
{
    TerminalTable table;
    // A text would pass for a list of its letters.
    const bool isList = terminalWindowClasses.typeId() == QMetaType::QVariantList;
    const QVariantList entries = isList ? terminalWindowClasses.toList() : QVariantList();
    for (const QVariant& entry : entries) {
        const auto terminal = entry.typeId() == QMetaType::QString ? parsed(entry.toString()) : std::nullopt;
        if (terminal)
            table.append(*terminal);
    }
    return table + knownTerminals();
}

} // namespace tulvane
