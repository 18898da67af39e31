#pragma once

#include <QAccessible>
#include <QAccessibleObject>

namespace tulvane {

class ProgressBox;

/// A ProgressBox as assistive programs see it: a progress bar without children. Main thread.
class ProgressAccessible final : public QAccessibleObject, public QAccessibleValueInterface {
public:
    explicit ProgressAccessible(ProgressBox* box);

    [[nodiscard]] QAccessibleInterface* parent() const override;
    [[nodiscard]] QAccessibleInterface* child(int index) const override;
    [[nodiscard]] int childCount() const override;
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override;
    [[nodiscard]] QWindow* window() const override;
    /// In pixels of the screen.
    [[nodiscard]] QRect rect() const override;
    [[nodiscard]] QAccessible::Role role() const override;
    [[nodiscard]] QAccessible::State state() const override;
    /// The name is the box's property `label`; the value is as a person reads it, "" while it is not known.
    [[nodiscard]] QString text(QAccessible::Text kind) const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    [[nodiscard]] QVariant currentValue() const override;
    /// Nothing: people cannot move it.
    void setCurrentValue(const QVariant& value) override;
    [[nodiscard]] QVariant maximumValue() const override;
    [[nodiscard]] QVariant minimumValue() const override;
    [[nodiscard]] QVariant minimumStepSize() const override;

private:
    [[nodiscard]] ProgressBox* box() const;
};

} // namespace tulvane
