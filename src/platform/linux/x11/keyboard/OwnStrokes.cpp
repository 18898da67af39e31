#include <platform/linux/x11/keyboard/OwnStrokes.h>

#include <algorithm>

namespace tulvane {

using namespace std::chrono_literals;

namespace {

constexpr auto longestWay = 250ms;
// A program that is busy for so long has other troubles.
constexpr auto longestBusy = 10s;

} // namespace

OwnStrokes& OwnStrokes::ofThisProcess()
{
    static OwnStrokes strokes;
    return strokes;
}

void OwnStrokes::add(quint32 keycode, bool isDown)
{
    const auto now = std::chrono::steady_clock::now();
    // Without a tap nothing else would.
    forgetBefore(now - longestBusy);
    m_strokes.push_back({keycode, isDown, now});
}

bool OwnStrokes::take(quint32 keycode, bool isDown, std::chrono::steady_clock::time_point happened)
{
    forgetBefore(happened - longestWay);
    const auto own = std::ranges::find_if(m_strokes, [&](const Stroke& stroke) {
        return stroke.keycode == keycode && stroke.isDown == isDown;
    });
    if (own == m_strokes.end())
        return false;
    m_strokes.erase(own);
    return true;
}

void OwnStrokes::forgetBefore(std::chrono::steady_clock::time_point oldest)
{
    std::erase_if(m_strokes, [oldest](const Stroke& stroke) { return stroke.posted < oldest; });
}

} // namespace tulvane
