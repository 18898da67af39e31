#pragma once

#include <ui/windows/SettingsSelection.h>

#include <QObject>
#include <QVariantList>

namespace tulvane {

/// The main window's frame: its sidebar and which page it shows. Main thread.
class MainViewModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    Q_PROPERTY(tulvane::SettingsSelection* selection READ selection CONSTANT)
    /// Objects with `page` (a SettingsSelection.Page), `name`, `title` and `symbol`, in the sidebar's order.
    Q_PROPERTY(QVariantList entries READ entries CONSTANT)
    Q_PROPERTY(QString version READ version CONSTANT)

public:
    /// `version` is the short version of the application; the selection outlives this object.
    MainViewModel(SettingsSelection& selection, const QString& version, QObject* parent);

    [[nodiscard]] SettingsSelection* selection() const { return &m_selection; }
    [[nodiscard]] static QVariantList entries();
    Q_INVOKABLE [[nodiscard]] QString titleOf(tulvane::SettingsSelection::Page page) const;
    [[nodiscard]] QString version() const { return m_version; }

private:
    SettingsSelection& m_selection;
    QString m_version;
};

} // namespace tulvane
