#include <base/Translate.h>
#include <ui/menubar/MenuBarCommands.h>
#include <ui/menubar/MenuBarMenu.h>
#include <ui/menubar/MenuBarReport.h>
#include <ui/menubar/MenuLines.h>

#include <QMetaObject>

#include <utility>

namespace tulvane {

MenuBarMenu::MenuBarMenu(StatusItem& item, MenuBarReport& report, const MenuBarCommands& commands,
                         QObject* parent)
    : QObject(parent),
      m_item(item),
      m_report(report),
      m_commands(commands)
{
    m_item.setOpeningHandler([this] {
        m_report.refresh();
        update();
    });
    connect(&report, &MenuBarReport::changed, this, &MenuBarMenu::noteChange);
    connect(&commands, &MenuBarCommands::changed, this, &MenuBarMenu::noteChange);
    update();
}

void MenuBarMenu::noteChange()
{
    if (!std::exchange(m_isNoted, true))
        QMetaObject::invokeMethod(this, &MenuBarMenu::update, Qt::QueuedConnection);
}

void MenuBarMenu::update()
{
    m_isNoted = false;
    // Each call is a message on the desktop's bus: only what is new is sent.
    if (const QString now = m_report.symbol(); std::exchange(m_shownSymbol, now) != now)
        m_item.setSymbol(now);
    const QString description = translate("Tulvane") + QStringLiteral(" – ") + m_report.statusLine();
    if (std::exchange(m_shownDescription, description) != description)
        m_item.setDescription(description);
    if (const QList<MenuEntry> now = entries(); std::exchange(m_shown, now) != now)
        m_item.setMenu(now);
}

QList<MenuEntry> MenuBarMenu::entries() const
{
    QList<MenuEntry> menu;
    menu.append(menuLine(MenuEntry::Kind::label, "status", m_report.statusLine()));
    if (const auto today = m_report.todayLine())
        menu.append(menuLine(MenuEntry::Kind::label, "today", *today));
    menu.append(menuSeparator("afterReport"));
    menu.append(m_commands.entries());
    return menu;
}

} // namespace tulvane
