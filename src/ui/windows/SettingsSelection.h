#pragma once

#include <dictation/SettingsTab.h>

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace tulvane {

/// Which page of the main window is selected. A caller that wants to show a page sets it and shows the
/// window. Main thread. Not final: the QML engine derives from what it can make.
class SettingsSelection : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    Q_PROPERTY(Page page READ page WRITE setPage NOTIFY tabChanged)

public:
    /// A SettingsTab, as QML names it.
    enum class Page {
        Home = static_cast<int>(SettingsTab::home),
        Models = static_cast<int>(SettingsTab::models),
        History = static_cast<int>(SettingsTab::history),
        Statistics = static_cast<int>(SettingsTab::statistics),
        Settings = static_cast<int>(SettingsTab::settings),
        About = static_cast<int>(SettingsTab::about),
    };
    Q_ENUM(Page)

    using QObject::QObject;

    [[nodiscard]] SettingsTab tab() const { return m_tab; }
    void setTab(SettingsTab tab)
    {
        if (m_tab == tab)
            return;
        m_tab = tab;
        Q_EMIT tabChanged();
    }

    [[nodiscard]] Page page() const { return static_cast<Page>(m_tab); }
    /// The page, and on it the control of this name: it gets the focus, and is lit for a moment.
    Q_INVOKABLE void lead(tulvane::SettingsSelection::Page page, const QString& control)
    {
        setPage(page);
        Q_EMIT controlWanted(control);
    }
    void setPage(Page page) { setTab(static_cast<SettingsTab>(page)); }

Q_SIGNALS:
    void tabChanged();
    /// The selected page, which is shown by now, is to lead to one of its controls.
    void controlWanted(const QString& control);

private:
    SettingsTab m_tab = SettingsTab::home;
};

} // namespace tulvane
