#pragma once

#include <dictation/SettingsTab.h>

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace tulvane {

/// Which page of the main window is selected. Whoever wants to show a page sets it and shows the window.
/// Main thread. Not final: the QML engine derives from what it can make.
class SettingsSelection : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    /// The page's raw value, as QML reads and sets it; an unknown one changes nothing.
    Q_PROPERTY(QString page READ page WRITE setPage NOTIFY tabChanged)

public:
    using QObject::QObject;

    [[nodiscard]] SettingsTab tab() const { return m_tab; }
    void setTab(SettingsTab tab)
    {
        if (m_tab == tab)
            return;
        m_tab = tab;
        Q_EMIT tabChanged();
    }

    [[nodiscard]] QString page() const { return rawValue(m_tab); }
    void setPage(const QString& page) { setTab(fromRawValue<SettingsTab>(page).value_or(m_tab)); }

Q_SIGNALS:
    void tabChanged();

private:
    SettingsTab m_tab = SettingsTab::home;
};

} // namespace tulvane
