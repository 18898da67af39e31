#include <platform/linux/desktop/shell/TrayMenu.h>

#include <QAction>
#include <QActionGroup>
#include <QMetaObject>
#include <QSet>

namespace tulvane {

namespace {

using Kind = MenuEntry::Kind;

constexpr auto kindProperty = "tulvaneKind";

bool isFor(const QAction* action, const MenuEntry& entry)
{
    return action && action->objectName() == entry.name &&
           action->property(kindProperty).toInt() == static_cast<int>(entry.kind);
}

void drop(QMenu& menu, QAction* action)
{
    menu.removeAction(action);
    // Later: it may be the one that is being clicked.
    if (action->menu())
        action->menu()->deleteLater();
    else
        action->deleteLater();
}

void dropUnknown(QMenu& menu, const QList<MenuEntry>& entries)
{
    QSet<QString> known;
    for (const MenuEntry& entry : entries)
        known.insert(entry.name);
    for (QAction* const action : menu.actions()) {
        if (!known.contains(action->objectName()))
            drop(menu, action);
    }
}

} // namespace

TrayMenu::TrayMenu(DrawnBy drawnBy) : m_drawnBy(drawnBy) {}

QString TrayMenu::written(const QString& text, DrawnBy drawnBy)
{
    QString line = text;
    if (drawnBy == DrawnBy::us)
        return line.replace(u'&', QStringLiteral("&&"));
    line.replace(u'_', QStringLiteral("__"));
    // On its way to the desktop the first ampersand becomes the desktop's own mark, an underscore. One in
    // front, before a character without width, takes that on itself.
    return line.contains(u'&') ? QStringLiteral("&\u200B") + line : line;
}

void TrayMenu::setEntries(const QList<MenuEntry>& entries)
{
    fill(m_menu, entries);
}

void TrayMenu::fill(QMenu& menu, const QList<MenuEntry>& entries)
{
    dropUnknown(menu, entries);
    for (qsizetype i = 0; i < entries.size(); ++i) {
        QAction* action = menu.actions().value(i);
        if (!isFor(action, entries[i])) {
            QAction* const before = action;
            action = made(menu, entries[i]);
            menu.insertAction(before, action);
        }
        show(*action, entries[i]);
    }
    while (menu.actions().size() > entries.size())
        drop(menu, menu.actions().last());
}

QAction* TrayMenu::made(QMenu& menu, const MenuEntry& entry)
{
    QAction* action = nullptr;
    if (entry.kind == Kind::submenu) {
        auto* const inner = new QMenu(&menu);
        new QActionGroup(inner);
        action = inner->menuAction();
    } else {
        action = new QAction(&menu);
    }
    action->setObjectName(entry.name);
    action->setProperty(kindProperty, static_cast<int>(entry.kind));
    action->setSeparator(entry.kind == Kind::separator);
    action->setEnabled(entry.kind != Kind::label);
    if (entry.kind == Kind::choice) {
        action->setCheckable(true);
        if (auto* const group = menu.findChild<QActionGroup*>(QString(), Qt::FindDirectChildrenOnly))
            group->addAction(action);
    }
    return action;
}

void TrayMenu::show(QAction& action, const MenuEntry& entry)
{
    const QString text = written(entry.text, m_drawnBy);
    if (action.text() != text)
        action.setText(text);
    if (entry.kind == Kind::choice)
        action.setChecked(entry.isChecked);
    if (entry.kind == Kind::submenu)
        fill(*action.menu(), entry.entries);
    action.disconnect(this);
    if (entry.activate)
        // Once the menu has closed and has let the keyboard go.
        connect(&action, &QAction::triggered, this, entry.activate, Qt::QueuedConnection);
}

} // namespace tulvane
