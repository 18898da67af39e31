#include <ports/UserDefaults.h>
#include <ui/windows/WindowFrame.h>

#include <QGuiApplication>
#include <QScreen>
#include <QStringList>
#include <QTimerEvent>
#include <QWindow>

#include <algorithm>
#include <utility>

namespace tulvane {

namespace {

/// A window that is being dragged changes at every frame; half a second after the last one is soon enough.
constexpr int restMilliseconds = 500;

/// What a window manager puts above a window. It reports how much only once the window is shown, and
/// not every one moves a title bar out from under the desktop's own bar.
constexpr int titleBarHeight = 36;

QRect placeForWindows(const QScreen& screen)
{
    return screen.availableGeometry().adjusted(0, titleBarHeight, 0, 0);
}

/// How large a window that is about to be shown may be. On Wayland the compositor alone decides on which
/// screen it opens, and leaves it at its size and place where that one is smaller.
QSize largestOn(const QScreen& screen)
{
    QSize largest = placeForWindows(screen).size();
    if (QGuiApplication::platformName().startsWith(QLatin1StringView("wayland"))) {
        for (const QScreen* each : QGuiApplication::screens())
            largest = largest.boundedTo(placeForWindows(*each).size());
    }
    return largest;
}

int primaryHeight()
{
    const QScreen* const primary = QGuiApplication::primaryScreen();
    return primary ? primary->geometry().height() : 0;
}

/// The screen that holds the most of the frame; null when none holds any of it.
const QScreen* screenOf(const QRect& frame)
{
    const QScreen* best = nullptr;
    int most = 0;
    for (const QScreen* screen : QGuiApplication::screens()) {
        const QRect part = screen->availableGeometry() & frame;
        if (part.width() * part.height() > most) {
            most = part.width() * part.height();
            best = screen;
        }
    }
    return best;
}

QRect centred(QSize size, const QRect& area)
{
    const QSize fitting = size.boundedTo(area.size());
    return {area.center() - QPoint(fitting.width() / 2, fitting.height() / 2), fitting};
}

QRect movedInto(QRect frame, const QRect& area)
{
    frame.setSize(frame.size().boundedTo(area.size()));
    frame.moveLeft(std::clamp(frame.left(), area.left(), area.right() + 1 - frame.width()));
    frame.moveTop(std::clamp(frame.top(), area.top(), area.bottom() + 1 - frame.height()));
    return frame;
}

} // namespace

WindowFrame::WindowFrame(QWindow& window, QString autosaveName, UserDefaults& defaults)
    : m_window(window),
      m_autosaveName(std::move(autosaveName)),
      m_defaults(defaults),
      m_smallest(window.minimumSize())
{
    connect(&window, &QWindow::screenChanged, this, &WindowFrame::follow);
    for (const auto changed :
         {&QWindow::xChanged, &QWindow::yChanged, &QWindow::widthChanged, &QWindow::heightChanged})
        connect(&window, changed, this, &WindowFrame::noteChange);
}

QString WindowFrame::key() const
{
    return QStringLiteral("NSWindow Frame ") + m_autosaveName;
}

void WindowFrame::restore(QSize size, const QScreen& screen)
{
    const auto stored = fromText(m_defaults.value(key()).toString(), primaryHeight());
    const QScreen* const home = stored ? screenOf(*stored) : nullptr;
    const QSize largest = largestOn(home ? *home : screen);
    m_window.setMinimumSize(m_smallest.boundedTo(largest));
    if (!home) {
        m_window.setGeometry(centred(size.boundedTo(largest), placeForWindows(screen)));
        return;
    }
    QRect frame = *stored;
    frame.setSize(frame.size().expandedTo(m_window.minimumSize()).boundedTo(largest));
    m_window.setGeometry(movedInto(frame, placeForWindows(*home)));
}

void WindowFrame::follow(const QScreen* screen)
{
    disconnect(m_screenChange);
    if (!screen)
        return;
    m_screenChange = connect(screen, &QScreen::geometryChanged, this, [this, screen] { fitInto(*screen); });
    fitInto(*screen);
}

void WindowFrame::fitInto(const QScreen& screen)
{
    boundMinimum(screen);
    // What fills its screen has that size from the window manager.
    const QSize size = m_window.size();
    const bool isTooLarge = size.boundedTo(screen.geometry().size()) != size;
    if (isTooLarge && m_window.isVisible() && m_window.windowState() == Qt::WindowNoState)
        m_window.resize(size.boundedTo(placeForWindows(screen).size()));
}

void WindowFrame::boundMinimum(const QScreen& screen)
{
    m_window.setMinimumSize(m_smallest.boundedTo(placeForWindows(screen).size()));
}

void WindowFrame::noteChange()
{
    if (!m_window.isVisible() || m_window.windowState() != Qt::WindowNoState)
        return;
    if (m_timer != 0)
        killTimer(m_timer);
    m_timer = startTimer(restMilliseconds);
}

void WindowFrame::timerEvent(QTimerEvent* event)
{
    if (event->timerId() == m_timer)
        store();
}

void WindowFrame::store()
{
    if (m_timer == 0)
        return;
    killTimer(m_timer);
    m_timer = 0;
    const QScreen* const screen = m_window.screen();
    const QString text = toText(m_window.geometry(), screen ? screen->geometry() : QRect(), primaryHeight());
    // A frame that cannot be stored is no loss worth a message: the window opens in its default place.
    static_cast<void>(m_defaults.set(key(), text));
}

QString WindowFrame::toText(const QRect& frame, const QRect& screen, int primaryHeight)
{
    QString text;
    for (const QRect& rect : {frame, screen}) {
        for (const int number :
             {rect.x(), primaryHeight - (rect.y() + rect.height()), rect.width(), rect.height()})
            text += QString::number(number) + u' ';
    }
    return text;
}

std::optional<QRect> WindowFrame::fromText(const QString& text, int primaryHeight)
{
    const QStringList words = text.split(u' ', Qt::SkipEmptyParts);
    if (words.size() < 4)
        return std::nullopt;
    std::array<int, 4> numbers{};
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        bool isNumber = false;
        numbers.at(i) = qRound(words.at(static_cast<qsizetype>(i)).toDouble(&isNumber));
        if (!isNumber)
            return std::nullopt;
    }
    const auto [x, y, width, height] = numbers;
    if (width <= 0 || height <= 0)
        return std::nullopt;
    return QRect(x, primaryHeight - (y + height), width, height);
}

} // namespace tulvane
