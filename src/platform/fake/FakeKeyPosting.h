#pragma once

#include <ports/KeyPosting.h>

#include <QList>

#include <functional>
#include <optional>

namespace tulvane {

/// Keeps what was posted, in order.
class FakeKeyPosting final : public KeyPosting {
public:
    enum class Stroke { paste, space };

    void prepare() override { ++preparations; }
    [[nodiscard]] QFuture<bool> paste(const PasteTarget& target) override
    {
        if (!m_canPaste || target.window != windowInFront.value_or(target.window))
            return QtFuture::makeReadyFuture(false);
        m_targets.append(target);
        note(Stroke::paste);
        return QtFuture::makeReadyFuture(true);
    }
    [[nodiscard]] QFuture<bool> typeSpaces(int count) override
    {
        for (int typed = 0; typed < count; ++typed) {
            if (m_spacesLeft == 0)
                return QtFuture::makeReadyFuture(false);
            --m_spacesLeft;
            note(Stroke::space);
        }
        return QtFuture::makeReadyFuture(true);
    }

    /// From now on no paste can be posted.
    void failPastes() { m_canPaste = false; }
    /// Only so many spaces more can be posted.
    void failSpacesAfter(int count) { m_spacesLeft = count; }
    /// The window that is in front when the keys go out; the target's own where not set.
    std::optional<quint64> windowInFront;
    int preparations = 0;
    /// Called for every posted stroke.
    std::function<void(Stroke)> onPost;

    [[nodiscard]] QList<Stroke> posted() const { return m_posted; }
    [[nodiscard]] qsizetype pastes() const { return m_posted.count(Stroke::paste); }
    [[nodiscard]] qsizetype spaces() const { return m_posted.count(Stroke::space); }
    /// Where the pastes went.
    [[nodiscard]] QList<PasteTarget> targets() const { return m_targets; }
    void forget()
    {
        m_posted.clear();
        m_targets.clear();
    }

private:
    void note(Stroke stroke)
    {
        m_posted.append(stroke);
        if (onPost)
            onPost(stroke);
    }

    QList<Stroke> m_posted;
    QList<PasteTarget> m_targets;
    bool m_canPaste = true;
    int m_spacesLeft = -1; ///< without a limit where negative
};

} // namespace tulvane
