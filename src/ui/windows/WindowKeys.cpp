#include <base/Translate.h>
#include <ports/KeyModifiers.h>
#include <ports/VirtualKeys.h>
#include <ui/windows/WindowKeys.h>

#include <algorithm>

namespace tulvane {

namespace {

QList<WindowKey> allWindowKeys()
{
    using enum WindowCommand;
    QList<WindowKey> keys{
        {.command = close, .key = Qt::Key_W, .everywhere = true},
        {.command = quit, .key = Qt::Key_Q, .everywhere = true},
        {.command = settings, .key = Qt::Key_Comma, .everywhere = true},
        {.command = setupGuide, .key = Qt::Key_F1, .withControl = false, .everywhere = true},
        {.command = search, .key = Qt::Key_F},
        {.command = previousPage, .key = Qt::Key_PageUp},
        {.command = nextPage, .key = Qt::Key_PageDown},
    };
    int digit = Qt::Key_1;
    for (const SettingsTab tab : allCases<SettingsTab>())
        keys.append({.command = page, .key = static_cast<Qt::Key>(digit++), .page = tab});
    return keys;
}

/// The toolkit's name of the key; none for one that no window key uses.
std::optional<Qt::Key> keyOf(const GlobalHotkeys& hotkeys, const KeyCombination& combination)
{
    switch (combination.keyCode) {
    case virtualKeys::pageUp:
        return Qt::Key_PageUp;
    case virtualKeys::pageDown:
        return Qt::Key_PageDown;
    case virtualKeys::f1:
        return Qt::Key_F1;
    default:
        break;
    }
    const QStringList caps = hotkeys.display(combination).caps;
    if (caps.isEmpty() || caps.constLast().size() != 1)
        return std::nullopt;
    return static_cast<Qt::Key>(caps.constLast().front().toUpper().unicode());
}

} // namespace

QKeySequence WindowKey::sequence() const
{
    return withControl ? QKeySequence(Qt::CTRL | key) : QKeySequence(key);
}

QString WindowKey::title() const
{
    switch (command) {
    case WindowCommand::close:
        return translate("Close");
    case WindowCommand::quit:
        return translate("Quit Tulvane");
    case WindowCommand::settings:
        return translate("Settings");
    case WindowCommand::setupGuide:
        return translate("Setup guide");
    case WindowCommand::page:
        return tulvane::title(page);
    case WindowCommand::nextPage:
        return translate("Next page");
    case WindowCommand::previousPage:
        return translate("Previous page");
    case WindowCommand::search:
        return translate("Search the history");
    }
    Q_UNREACHABLE();
}

const QList<WindowKey>& windowKeys()
{
    static const QList<WindowKey> keys = allWindowKeys();
    return keys;
}

ShortcutRules::MenuItemOf windowKeyTitles(const GlobalHotkeys& hotkeys)
{
    return [&hotkeys](const KeyCombination& combination) -> std::optional<QString> {
        const quint32 modifiers = combination.modifiers;
        const bool withControl = modifiers == carbon::control || modifiers == carbon::command;
        if (!withControl && modifiers != 0)
            return std::nullopt;
        const auto key = keyOf(hotkeys, combination);
        const auto found = std::ranges::find_if(windowKeys(), [&](const WindowKey& window) {
            return window.key == key && window.withControl == withControl;
        });
        return found == windowKeys().end() ? std::nullopt : std::optional(found->title());
    };
}

} // namespace tulvane
