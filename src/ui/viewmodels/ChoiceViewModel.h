#pragma once

#include <settings/AnySetting.h>

#include <QObject>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

#include <functional>

namespace tulvane {

/// One preference that the user chooses among few values: what a picker shows and changes. Main thread.
class ChoiceViewModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    Q_PROPERTY(QString key READ key CONSTANT)
    Q_PROPERTY(QString title READ title CONSTANT)
    /// Objects with `value`, the stored form, and `title`, in the order in which the user is offered them
    Q_PROPERTY(QVariantList options READ options CONSTANT)
    /// The stored form of the value that holds. Another text than an option's `value` changes nothing.
    Q_PROPERTY(QString value READ value WRITE setValue NOTIFY valueChanged)

public:
    /// `setting` outlives this object. `changedByUser` is called after a value that this object has assigned
    /// and that differs from the one before.
    explicit ChoiceViewModel(AnySetting& setting, QObject* parent, std::function<void()> changedByUser = {});

    [[nodiscard]] QString key() const { return m_setting.key(); }
    [[nodiscard]] QString title() const { return m_setting.title(); }
    [[nodiscard]] QVariantList options() const;
    [[nodiscard]] QString value() const { return m_setting.value().toString(); }
    void setValue(const QString& value);

Q_SIGNALS:
    void valueChanged();

protected:
    /// What is offered, in order.
    [[nodiscard]] virtual QList<SettingChoice> choices() const { return m_setting.choices(); }

private:
    AnySetting& m_setting;
    std::function<void()> m_changedByUser;
};

} // namespace tulvane
