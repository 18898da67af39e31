#pragma once

#include <ports/KeyPosting.h>

#include <QList>

#include <algorithm>
#include <functional>
#include <utility>

namespace tulvane {

/// Keeps the keystrokes that were posted.
class FakeKeyPosting final : public KeyPosting {
public:
    using Keystroke = std::pair<int, quint32>;

    [[nodiscard]] QFuture<bool> post(int keyCode, quint32 flags) override
    {
        if (m_failing.contains(keyCode))
            return QtFuture::makeReadyFuture(false);
        m_posted.append({keyCode, flags});
        if (onPost)
            onPost(keyCode);
        return QtFuture::makeReadyFuture(true);
    }

    /// From now on this key cannot be posted.
    void fail(int keyCode) { m_failing.append(keyCode); }
    /// Called for every posted keystroke.
    std::function<void(int keyCode)> onPost;

    [[nodiscard]] QList<Keystroke> posted() const { return m_posted; }
    [[nodiscard]] qsizetype count(int keyCode) const
    {
        return std::count_if(m_posted.cbegin(), m_posted.cend(),
                             [&](const Keystroke& stroke) { return stroke.first == keyCode; });
    }

private:
    QList<Keystroke> m_posted;
    QList<int> m_failing;
};

} // namespace tulvane
