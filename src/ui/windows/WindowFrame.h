#pragma once

#include <QObject>
#include <QRect>
#include <QString>

#include <optional>

class QScreen;
class QWindow;

namespace tulvane {

class UserDefaults;

/// Keeps a window's place and size in the user's preferences under its autosave name, and gives them back.
/// Stored as "x y width height screenX screenY screenWidth screenHeight ", in points, counted from the
/// bottom left of the primary screen. Main thread.
class WindowFrame final : public QObject {
public:
    /// The window and its minimum size are bounded by its screen from now on, whichever the desktop opens it
    /// on or moves it to, or the lower part of a window on a small one could never be reached. Stores from
    /// now on, when a move or a change of size has come to rest. Both outlive this object.
    WindowFrame(QWindow& window, QString autosaveName, UserDefaults& defaults);

    /// Before the window is first shown: the stored frame, moved and cut so that it lies on a screen of today
    /// and is not below the window's minimum size; without a stored one `size`, centred on `screen`. Either
    /// way there is room for a title bar above it.
    void restore(QSize size, const QScreen& screen);
    /// Stores at once what is still to be stored.
    void store();

    [[nodiscard]] static QString toText(const QRect& frame, const QRect& screen, int primaryHeight);
    [[nodiscard]] static std::optional<QRect> fromText(const QString& text, int primaryHeight);

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    void noteChange();
    void follow(const QScreen* screen);
    void fitInto(const QScreen& screen);
    void boundMinimum(const QScreen& screen);
    [[nodiscard]] QString key() const;

    QWindow& m_window;
    QString m_autosaveName;
    UserDefaults& m_defaults;
    QSize m_smallest; ///< what the window needs where there is room
    int m_timer = 0;
    QMetaObject::Connection m_screenChange; ///< of the screen that the window is on
};

} // namespace tulvane
