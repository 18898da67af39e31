#pragma once

#include <ui/look/RoundBox.h>

namespace tulvane {

// Qualified, because the QML linter knows the base by that name alone.
/// A box that shows how far something is, and tells assistive programs its value in whole per cent: the
/// toolkit's own items tell one for sliders and spin boxes only. It needs an `Accessible.role` in QML to be
/// in their tree. Main thread.
class ProgressBox : public tulvane::RoundBox {
    Q_OBJECT
    QML_ELEMENT
    /// 0 to 1; below 0 it is not known.
    Q_PROPERTY(qreal value READ value WRITE setValue NOTIFY valueChanged)

public:
    explicit ProgressBox(QQuickItem* parent = nullptr);

    [[nodiscard]] qreal value() const { return m_value; }
    void setValue(qreal value);
    /// 0 to 100; 0 while it is not known.
    [[nodiscard]] int percent() const;

Q_SIGNALS:
    void valueChanged();

private:
    qreal m_value = 0;
};

} // namespace tulvane
