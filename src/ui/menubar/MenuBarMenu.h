#pragma once

#include <ports/StatusItem.h>

#include <QObject>

namespace tulvane {

class MenuBarCommands;
class MenuBarReport;

/// The program's status item: an icon and a first line that follow the phase, the day's tally, and the
/// commands. A view: it keeps nothing but what it has shown. Main thread.
class MenuBarMenu final : public QObject {
    Q_OBJECT

public:
    /// All collaborators outlive this object.
    MenuBarMenu(StatusItem& item, MenuBarReport& report, const MenuBarCommands& commands,
                QObject* parent = nullptr);

    /// The whole menu as it is to be now.
    [[nodiscard]] QList<MenuEntry> entries() const;

private:
    /// Shows the present state once the event loop is reached, so that one update serves several changes.
    void noteChange();
    void update();

    StatusItem& m_item;
    MenuBarReport& m_report;
    const MenuBarCommands& m_commands;
    bool m_isNoted = false;
    QString m_shownSymbol;
    QString m_shownDescription;
    QList<MenuEntry> m_shown;
};

} // namespace tulvane
