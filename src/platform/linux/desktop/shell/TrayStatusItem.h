#pragma once

#include <platform/linux/desktop/shell/IconDock.h>
#include <platform/linux/desktop/shell/TrayHosts.h>
#include <platform/linux/desktop/shell/TrayMenu.h>
#include <ports/StatusItem.h>

#include <QObject>
#include <QStringList>
#include <QSystemTrayIcon>

#include <memory>

namespace tulvane {

/// The icon among the desktop's status icons: over the session bus where a bar listens there, which then
/// draws the menu itself, else docked into the window system's tray. Whichever comes first decides, at any
/// time, since the toolkit settles it once for a process; that one may go and come back, and so
/// may the bus. Main thread; needs a QApplication.
class TrayStatusItem final : public QObject, public StatusItem {
    Q_OBJECT

public:
    /// `symbolFolder` holds NAME.svg for each symbol; `desktops` are the session's names ("GNOME"); `dock` is
    /// null where the window system has none.
    TrayStatusItem(const QString& symbolFolder, const QStringList& desktops, std::unique_ptr<IconDock> dock);
    ~TrayStatusItem() override;

    void setSymbol(const QString& name) override;
    void setDescription(const QString& text) override;
    void setMenu(const QList<MenuEntry>& entries) override;
    void setOpeningHandler(std::function<void()> handler) override { m_opening = std::move(handler); }

    [[nodiscard]] bool isShown() const override;
    void setShownHandler(std::function<void()> handler) override { m_shownHandler = std::move(handler); }

    /// Follows the desktop's theme.
    [[nodiscard]] bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void place();
    void leaveLostBus();
    void noteShown() const;
    void showIcon();
    void openMenu(QSystemTrayIcon::ActivationReason reason);
    [[nodiscard]] bool isOverBus() { return m_menu && m_menu->menu().platformMenu(); }

    QString m_symbolFolder;
    QStringList m_desktops;
    QString m_symbol;
    QString m_description;
    QList<MenuEntry> m_entries;
    std::function<void()> m_opening;
    std::function<void()> m_shownHandler;
    TrayHosts m_hosts;
    std::unique_ptr<IconDock> m_dock;
    // The icon goes before the menu that it knows.
    std::unique_ptr<TrayMenu> m_menu;
    std::unique_ptr<TrayMenu> m_ownMenu; ///< for a bar that asks us to open the menu, rather than draw it
    std::unique_ptr<QSystemTrayIcon> m_icon;
};

} // namespace tulvane
