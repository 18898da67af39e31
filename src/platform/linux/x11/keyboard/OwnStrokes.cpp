#include <platform/linux/x11/keyboard/OwnStrokes.h>

#include <algorithm>

namespace tulvane {

using namespace std::chrono_literals;

namespace {

constexpr auto longestWay = 1s;

} // namespace

OwnStrokes& OwnStrokes::ofThisProcess()
{
    static OwnStrokes strokes;
    return strokes;
}

void OwnStrokes::add(quint32 keycode, bool isDown)
{
    m_strokes.push_back({keycode, isDown, std::chrono::steady_clock::now()});
}

bool OwnStrokes::take(quint32 keycode, bool isDown)
{
    const auto oldest = std::chrono::steady_clock::now() - longestWay;
    std::erase_if(m_strokes, [oldest](const Stroke& stroke) { return stroke.posted < oldest; });
    const auto own = std::ranges::find_if(m_strokes, [&](const Stroke& stroke) {
        return stroke.keycode == keycode && stroke.isDown == isDown;
    });
    if (own == m_strokes.end())
        return false;
    m_strokes.erase(own);
    return true;
}

} // namespace tulvane
