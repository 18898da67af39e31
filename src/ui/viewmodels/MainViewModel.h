#pragma once

#include <ui/UiContext.h>
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
    /// Objects with `page`, `title` and `symbol`, in the sidebar's order.
    Q_PROPERTY(QVariantList entries READ entries CONSTANT)
    Q_PROPERTY(QString version READ version CONSTANT)

public:
    MainViewModel(const UiContext& context, SettingsSelection& selection, QObject* parent);

    [[nodiscard]] SettingsSelection* selection() const { return &m_selection; }
    [[nodiscard]] static QVariantList entries();
    [[nodiscard]] QString version() const { return m_version; }

private:
    SettingsSelection& m_selection;
    QString m_version;
};

} // namespace tulvane
