#pragma once

#include <QtGlobal>

#include <chrono>
#include <vector>

namespace tulvane {

/// The strokes that this process posts itself, so that its tap tells them from the user's. The server reports
/// both alike, in the order of their happening. Main thread.
class OwnStrokes final {
public:
    /// Those of this process; the tap and the posting have no other way to know of each other.
    [[nodiscard]] static OwnStrokes& ofThisProcess();

    /// A stroke is about to be posted.
    void add(quint32 keycode, bool isDown);
    /// Whether a stroke that the server reports, and that happened then, is one of ours, each once. The
    /// server takes one in at once: what was posted much earlier than that has not been reported, and is
    /// forgotten.
    [[nodiscard]] bool take(quint32 keycode, bool isDown, std::chrono::steady_clock::time_point happened);

private:
    struct Stroke {
        quint32 keycode;
        bool isDown;
        std::chrono::steady_clock::time_point posted;
    };

    void forgetBefore(std::chrono::steady_clock::time_point oldest);

    std::vector<Stroke> m_strokes;
};

} // namespace tulvane
