#pragma once

#include <QAbstractNativeEventFilter>

#include <cstdint>
#include <functional>

struct xcb_connection_t;

namespace tulvane {

/// Tells whether there is an X11 tray, which takes icons in by docking their windows. On other window systems
/// there never is. Main thread; needs a QGuiApplication, which it listens through.
class TrayDock final : public QAbstractNativeEventFilter {
public:
    TrayDock();
    ~TrayDock() override;
    TrayDock(const TrayDock&) = delete;
    TrayDock& operator=(const TrayDock&) = delete;

    [[nodiscard]] bool isThere() const;
    /// A tray has come.
    std::function<void()> onArrival;
    /// The tray that was there has gone.
    std::function<void()> onDeparture;

    [[nodiscard]] bool nativeEventFilter(const QByteArray& eventType, void* message,
                                         qintptr* result) override;

private:
    xcb_connection_t* m_connection = nullptr;
    std::uint32_t m_selection = 0;
    std::uint8_t m_selectionNotify = 0; ///< the number of the event that reports a new owner
};

} // namespace tulvane
