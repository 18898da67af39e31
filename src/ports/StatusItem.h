#pragma once

#include <QList>
#include <QString>

#include <functional>

namespace tulvane {

/// One line of a status item's menu.
struct MenuEntry {
    enum class Kind {
        label,     ///< text to be read, not to be clicked
        action,    ///< does something when it is clicked
        choice,    ///< one of several, `isChecked` when it is the chosen one
        submenu,   ///< opens `entries`
        separator, ///< a line between groups
    };

    Kind kind = Kind::action;
    QString name; ///< the same for as long as the line means the same, unique in its menu: "quit"
    QString text; ///< as it is read: no character in it means anything
    bool isChecked = false;
    std::function<void()> activate = {}; ///< when it is clicked; from the event loop
    QList<MenuEntry> entries = {};

    /// Whether a user sees no difference; what a click does is left out.
    [[nodiscard]] friend bool operator==(const MenuEntry& one, const MenuEntry& other)
    {
        return one.kind == other.kind && one.name == other.name && one.text == other.text &&
               one.isChecked == other.isChecked && one.entries == other.entries;
    }
};

/// The program's own place among the desktop's status icons, with the menu that a click opens. Where the
/// desktop has no such place nothing is shown and nothing fails; one that comes later is used from then on.
/// Main thread.
class StatusItem {
public:
    StatusItem() = default;
    StatusItem(const StatusItem&) = delete;
    StatusItem& operator=(const StatusItem&) = delete;
    virtual ~StatusItem() = default;

    /// The name of the symbol that is the icon ("mic.fill"). Nothing is shown before the first one.
    virtual void setSymbol(const QString& name) = 0;
    /// What the desktop shows beside the icon when the pointer rests on it, and reads out.
    virtual void setDescription(const QString& text) = 0;
    /// The menu's lines from top to bottom. A menu that is open changes in place.
    virtual void setMenu(const QList<MenuEntry>& entries) = 0;
    /// Called when the menu is about to open, where the desktop tells: the last moment for what changes with
    /// the clock alone. One handler.
    virtual void setOpeningHandler(std::function<void()> handler) = 0;
    /// Whether there is an icon that the user can see.
    [[nodiscard]] virtual bool isShown() const = 0;
    /// Called when `isShown` may have another answer. One handler; an empty one ends it.
    virtual void setShownHandler(std::function<void()> handler) = 0;
};

} // namespace tulvane
