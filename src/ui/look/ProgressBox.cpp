#include <ui/look/ProgressAccessible.h>
#include <ui/look/ProgressBox.h>

#include <QAccessible>

#include <algorithm>
#include <cmath>

namespace tulvane {

namespace {

QAccessibleInterface* accessibleOf(const QString&, QObject* object)
{
    auto* const box = qobject_cast<ProgressBox*>(object);
    return box ? new ProgressAccessible(box) : nullptr;
}

} // namespace

ProgressBox::ProgressBox(QQuickItem* parent) : RoundBox(parent)
{
    // The toolkit ignores a factory that it has.
    QAccessible::installFactory(accessibleOf);
}

void ProgressBox::setValue(qreal value)
{
    if (value == m_value)
        return;
    const int before = percent();
    m_value = value;
    Q_EMIT valueChanged();
    if (percent() != before && QAccessible::isActive()) {
        QAccessibleValueChangeEvent event(this, percent());
        QAccessible::updateAccessibility(&event);
    }
}

int ProgressBox::percent() const
{
    constexpr int most = 100;
    return static_cast<int>(std::lround(std::clamp(m_value, 0.0, 1.0) * most));
}

} // namespace tulvane
