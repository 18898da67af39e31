#pragma once

#include <QList>
#include <QPoint>
#include <QRect>
#include <QString>
#include <QStringList>

#include <xcb/xcb.h>

#include <optional>
#include <vector>

namespace tulvane::test {

/// What the screen shows, pixel by pixel.
struct ScreenPicture {
    int width = 0;
    std::vector<quint32> pixels;
    /// 0xRRGGBB.
    [[nodiscard]] quint32 at(QPoint place) const
    {
        return pixels.at(static_cast<std::size_t>(place.y() * width + place.x())) & 0xffffffU;
    }
};

/// Windows as the X server sees them, of every program, and some of this object's own. Waits for the
/// server, never for another program.
class ServerView final {
public:
    /// Throws std::runtime_error where there is no such server.
    explicit ServerView(const QString& display);
    ServerView(const ServerView&) = delete;
    ServerView& operator=(const ServerView&) = delete;
    ~ServerView();

    [[nodiscard]] xcb_window_t root() const { return m_screen->root; }
    [[nodiscard]] QSize size() const { return {m_screen->width_in_pixels, m_screen->height_in_pixels}; }
    /// What lies directly in the root and can be seen, the lowest first.
    [[nodiscard]] QList<xcb_window_t> stack() const;
    /// The window directly in the root that holds this one: the frame around a managed window.
    [[nodiscard]] xcb_window_t topLevel(xcb_window_t window) const;
    /// The unmanaged window of this size that can be seen; nullopt where there is none.
    [[nodiscard]] std::optional<xcb_window_t> unmanaged(QSize size) const;

    [[nodiscard]] bool isViewable(xcb_window_t window) const;
    [[nodiscard]] bool isUnmanaged(xcb_window_t window) const;
    [[nodiscard]] QRect place(xcb_window_t window) const;
    [[nodiscard]] int depth(xcb_window_t window) const;
    /// Where the window gets clicks, and where it is at all.
    [[nodiscard]] QList<QRect> inputShape(xcb_window_t window) const;
    [[nodiscard]] QList<QRect> boundingShape(xcb_window_t window) const;
    /// A property's 32-bit items; atoms by their names.
    [[nodiscard]] QList<quint32> numbers(xcb_window_t window, const char* property) const;
    [[nodiscard]] QStringList atoms(xcb_window_t window, const char* property) const;
    [[nodiscard]] xcb_window_t focus() const;
    /// The window that the window manager calls active.
    [[nodiscard]] xcb_window_t active() const { return numbers(root(), "_NET_ACTIVE_WINDOW").value(0); }
    [[nodiscard]] ScreenPicture picture() const;

    struct Looks {
        QRect place;
        quint32 color = 0xffffff;
        bool isUnmanaged = false;
        bool isFullScreen = false;
    };
    /// A window of this object's own, asked to appear.
    xcb_window_t show(const Looks& looks);
    void raise(xcb_window_t window) const;
    void destroy(xcb_window_t window) const;
    /// Presses of a mouse button in a window of its own that have come since the last call.
    [[nodiscard]] int clicks(xcb_window_t window);
    /// From now on the window's disappearances are counted.
    void watch(xcb_window_t window);
    [[nodiscard]] int disappearances(xcb_window_t window);
    /// Owns the selection, or gives it up.
    void own(const QString& selection, bool owned);
    /// The owner; 0 where there is none.
    [[nodiscard]] xcb_window_t owner(const QString& selection) const;

    [[nodiscard]] xcb_atom_t atom(const QString& name) const;

private:
    void readEvents();
    [[nodiscard]] QList<QRect> shape(xcb_window_t window, quint8 kind) const;

    xcb_connection_t* m_connection;
    const xcb_screen_t* m_screen = nullptr;
    xcb_window_t m_owner = 0;
    QList<xcb_window_t> m_clicked;
    QList<xcb_window_t> m_gone;
};

} // namespace tulvane::test
