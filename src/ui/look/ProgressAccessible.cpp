#include <ui/look/ProgressAccessible.h>
#include <ui/look/ProgressBox.h>

#include <QQuickWindow>

namespace tulvane {

namespace {

/// The one among an element's children that the item lies in; nullptr where there is none.
QAccessibleInterface* childAround(QAccessibleInterface* element, const QQuickItem* item)
{
    for (int index = 0; index < element->childCount(); ++index) {
        QAccessibleInterface* const child = element->child(index);
        const auto* const around = child ? qobject_cast<QQuickItem*>(child->object()) : nullptr;
        if (around && around->isAncestorOf(item))
            return child;
    }
    return nullptr;
}

} // namespace

ProgressAccessible::ProgressAccessible(ProgressBox* box) : QAccessibleObject(box) {}

ProgressBox* ProgressAccessible::box() const
{
    return static_cast<ProgressBox*>(object());
}

// Of the items around the box only some are in the tree, and only the tree says which.
QAccessibleInterface* ProgressAccessible::parent() const
{
    QAccessibleInterface* around = window() ? QAccessible::queryAccessibleInterface(window()) : nullptr;
    while (around) {
        QAccessibleInterface* const nearer = childAround(around, box());
        if (!nearer)
            break;
        around = nearer;
    }
    return around;
}

QAccessibleInterface* ProgressAccessible::child(int) const
{
    return nullptr;
}

int ProgressAccessible::childCount() const
{
    return 0;
}

int ProgressAccessible::indexOfChild(const QAccessibleInterface*) const
{
    return -1;
}

QWindow* ProgressAccessible::window() const
{
    return box()->window();
}

QRect ProgressAccessible::rect() const
{
    if (!window())
        return {};
    const QRectF inWindow = box()->mapRectToScene(box()->boundingRect());
    return inWindow.translated(window()->mapToGlobal(QPoint(0, 0))).toAlignedRect();
}

QAccessible::Role ProgressAccessible::role() const
{
    return QAccessible::ProgressBar;
}

QAccessible::State ProgressAccessible::state() const
{
    QAccessible::State state;
    state.readOnly = true;
    state.invisible = !window() || !window()->isVisible() || !box()->isVisible();
    state.busy = box()->value() < 0;
    return state;
}

QString ProgressAccessible::text(QAccessible::Text kind) const
{
    if (kind == QAccessible::Name)
        return box()->property("label").toString();
    if (kind == QAccessible::Value && box()->value() >= 0)
        return QString::number(box()->percent()) + QStringLiteral(" %");
    return {};
}

void* ProgressAccessible::interface_cast(QAccessible::InterfaceType type)
{
    return type == QAccessible::ValueInterface ? static_cast<QAccessibleValueInterface*>(this) : nullptr;
}

QVariant ProgressAccessible::currentValue() const
{
    return box()->percent();
}

void ProgressAccessible::setCurrentValue(const QVariant&) {}

QVariant ProgressAccessible::maximumValue() const
{
    return 100;
}

QVariant ProgressAccessible::minimumValue() const
{
    return 0;
}

QVariant ProgressAccessible::minimumStepSize() const
{
    return 1;
}

} // namespace tulvane
