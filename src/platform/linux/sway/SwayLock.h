#pragma once

#include <platform/linux/sway/ProgramWatch.h>
#include <platform/linux/sway/SwayConnection.h>
#include <ports/ScreenLock.h>

#include <QElapsedTimer>
#include <QTimer>

#include <functional>
#include <memory>

namespace tulvane {

/// The lockers of sway and its kind tell nothing on any bus, and sway nothing of them. While one covers the
/// screen it runs, and no window has the keyboard; both together count. So does one that has run for
/// `lockTime`, and what was locked stays so until a window has the keyboard again. Main thread.
class SwayLock final : public QObject, public ScreenLock {
    Q_OBJECT

public:
    static constexpr std::chrono::milliseconds lockTime{5000};

    /// `folders`: where programs are installed.
    SwayLock(std::shared_ptr<SwayConnection> sway, const QStringList& folders);
    Q_DISABLE_COPY_MOVE(SwayLock)
    ~SwayLock() override;

    [[nodiscard]] bool isLocked() const override { return m_isLocked; }
    void setChangeHandler(std::function<void(bool locked)> handler) override
    {
        m_handler = std::move(handler);
    }

private:
    void look();
    [[nodiscard]] bool hasFocus() const;

    std::shared_ptr<SwayConnection> m_sway;
    ProgramWatch m_lockers;
    QElapsedTimer m_sinceStart; ///< of a locker
    QTimer m_looks;             ///< while it is not certain yet
    bool m_isLocked = false;
    std::function<void(bool)> m_handler;
};

} // namespace tulvane
