#include <platform/linux/desktop/shell/SymbolIcon.h>
#include <platform/linux/desktop/shell/TrayStatusItem.h>

#include <QApplication>
#include <QCursor>
#include <QEvent>
#include <QPalette>
#include <QScreen>

namespace tulvane {

namespace {

bool themeIsDark()
{
    const QPalette palette = QGuiApplication::palette();
    return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
}

/// Above an icon in a lower bar, below one in an upper bar: beside the icon, not over it. Where the tray does
/// not say where the icon is, at the pointer, which has just clicked it.
QPoint placeFor(const QMenu& menu, const QRect& icon)
{
    if (icon.isEmpty())
        return QCursor::pos();
    const QScreen* const screen = QGuiApplication::screenAt(icon.center());
    const bool isLow = screen && icon.center().y() > screen->geometry().center().y();
    return isLow ? icon.topLeft() - QPoint(0, menu.sizeHint().height()) : icon.bottomLeft() + QPoint(0, 1);
}

} // namespace

TrayStatusItem::TrayStatusItem(const QString& symbolFolder, const QStringList& desktops,
                               std::unique_ptr<IconDock> dock)
    : m_symbolFolder(symbolFolder),
      m_desktops(desktops),
      m_hosts(LastingBus::session()),
      m_dock(std::move(dock))
{
    m_hosts.onArrival = [this] {
        place();
        noteShown();
    };
    m_hosts.onDeparture = [this] { noteShown(); };
    m_hosts.onNewBus = [this] { leaveLostBus(); };
    if (m_dock) {
        m_dock->setArrivalHandler(m_hosts.onArrival);
        m_dock->setDepartureHandler(m_hosts.onDeparture);
    }
    qApp->installEventFilter(this);
}

TrayStatusItem::~TrayStatusItem() = default;

void TrayStatusItem::setSymbol(const QString& name)
{
    m_symbol = name;
    // A bar may have been there before there was anything to show.
    if (!m_icon)
        m_hosts.ask();
    if (m_icon)
        showIcon();
    else if (m_dock && m_dock->isThere()) {
        place();
        noteShown();
    }
}

bool TrayStatusItem::isShown() const
{
    return m_icon && (m_hosts.isThere() || (m_dock && m_dock->isThere()));
}

void TrayStatusItem::noteShown() const
{
    if (m_shownHandler)
        m_shownHandler();
}

void TrayStatusItem::setDescription(const QString& text)
{
    m_description = text;
    if (m_icon)
        m_icon->setToolTip(text);
}

void TrayStatusItem::setMenu(const QList<MenuEntry>& entries)
{
    m_entries = entries;
    for (TrayMenu* const menu : {m_menu.get(), m_ownMenu.get()}) {
        if (menu)
            menu->setEntries(entries);
    }
}

/// Not before there is a place: the toolkit looks for one over the bus when the first icon is made, and keeps
/// to what it finds. A bar there goes before a dock.
void TrayStatusItem::place()
{
    if (m_icon || m_symbol.isEmpty())
        return;
    m_menu = std::make_unique<TrayMenu>();
    connect(&m_menu->menu(), &QMenu::aboutToShow, this, [this] {
        if (m_opening)
            m_opening();
    });
    m_icon = std::make_unique<QSystemTrayIcon>();
    connect(m_icon.get(), &QSystemTrayIcon::activated, this, &TrayStatusItem::openMenu);
    m_icon->setContextMenu(&m_menu->menu());
    m_menu->setDrawnBy(isOverBus() ? TrayMenu::DrawnBy::desktop : TrayMenu::DrawnBy::us);
    m_menu->setEntries(m_entries);
    m_icon->setToolTip(m_description);
    showIcon();
    m_icon->show();
}

/// The toolkit's icon stays with the connection that it was made over; the next bar gets another one.
void TrayStatusItem::leaveLostBus()
{
    if (!isOverBus())
        return;
    m_icon.reset();
    m_ownMenu.reset();
    m_menu.reset();
}

void TrayStatusItem::showIcon()
{
    m_icon->setIcon(symbolIcon(m_symbolFolder + u'/' + m_symbol + QStringLiteral(".svg"),
                               toneFor(m_desktops, themeIsDark())));
}

void TrayStatusItem::openMenu(QSystemTrayIcon::ActivationReason reason)
{
    // A click that comes soon after another one counts as a double one.
    if (reason != QSystemTrayIcon::Trigger && reason != QSystemTrayIcon::DoubleClick)
        return;
    TrayMenu* menu = m_menu.get();
    if (isOverBus()) {
        if (m_opening)
            m_opening();
        m_ownMenu = std::make_unique<TrayMenu>();
        m_ownMenu->setEntries(m_entries);
        menu = m_ownMenu.get();
    }
    menu->menu().popup(placeFor(menu->menu(), m_icon->geometry()));
}

bool TrayStatusItem::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::ApplicationPaletteChange && watched == qApp && m_icon)
        showIcon();
    return QObject::eventFilter(watched, event);
}

} // namespace tulvane
