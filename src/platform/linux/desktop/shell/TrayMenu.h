#pragma once

#include <ports/StatusItem.h>

#include <QMenu>
#include <QObject>

namespace tulvane {

/// A menu that is changed line by line rather than built anew, so that one that is open stays open. Main
/// thread.
class TrayMenu final : public QObject {
    Q_OBJECT

public:
    /// Who draws it: each takes other characters of a line's text for its marks.
    enum class DrawnBy { us, desktop };

    explicit TrayMenu(DrawnBy drawnBy = DrawnBy::us);

    [[nodiscard]] QMenu& menu() { return m_menu; }
    void setEntries(const QList<MenuEntry>& entries);
    /// The lines there are keep their text until they are set again.
    void setDrawnBy(DrawnBy drawnBy) { m_drawnBy = drawnBy; }

    /// The text as it has to be written for its reader to see `text`.
    [[nodiscard]] static QString written(const QString& text, DrawnBy drawnBy);

private:
    void fill(QMenu& menu, const QList<MenuEntry>& entries);
    [[nodiscard]] QAction* made(QMenu& menu, const MenuEntry& entry);
    void show(QAction& action, const MenuEntry& entry);

    DrawnBy m_drawnBy;
    QMenu m_menu;
};

} // namespace tulvane
