#pragma once

#include <QObject>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

#include <functional>

namespace tulvane {

class SettingsSelection;
class Windows;

/// The keys of the program's windows, and what each does. Main thread.
class WindowCommands final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    /// Objects with `sequence` (a QKeySequence) and `index`, for `run`: of every window, and all of
    /// the main one.
    Q_PROPERTY(QVariantList everywhere READ everywhere CONSTANT)
    Q_PROPERTY(QVariantList ofMainWindow READ ofMainWindow CONSTANT)

public:
    /// `quit` ends the program, once the event loop is reached. All collaborators outlive this object.
    WindowCommands(SettingsSelection& selection, Windows& windows, std::function<void()> quit,
                   QObject* parent);

    [[nodiscard]] static QVariantList everywhere();
    [[nodiscard]] static QVariantList ofMainWindow();
    /// Closing is for the window itself: `closeWanted`.
    Q_INVOKABLE void run(int index);

Q_SIGNALS:
    /// The window in front closes.
    void closeWanted();
    /// The history page, which is selected now, gives its search field the focus.
    void searchWanted();

private:
    void turnPage(int steps);

    SettingsSelection& m_selection;
    Windows& m_windows;
    std::function<void()> m_quit;
};

} // namespace tulvane
