#pragma once

#include <QObject>
#include <QSet>

class QWindow;

namespace tulvane {

/// Takes the program's ordinary windows out of the task bar and the overview of workspaces, and brings them
/// back there, without closing or re-mapping any. Does nothing where the windows are not on X11. Main thread;
/// lives as long as the QGuiApplication or shorter.
class TaskBarEntries final : public QObject {
public:
    TaskBarEntries() = default;
    ~TaskBarEntries() override;

    /// Applies to every window that is there, and while it is on to those to come.
    void setHidden(bool hidden);

    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void apply(const QWindow& window) const;

    bool m_isHidden = false;
    QSet<const QWindow*> m_appearing; ///< shown, but not seen yet; compared only
};

} // namespace tulvane
