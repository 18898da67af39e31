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
    /// Whether a stroke that the server reports is one of ours, each once. Those that were not reported
    /// within a second are forgotten.
    [[nodiscard]] bool take(quint32 keycode, bool isDown);

private:
    struct Stroke {
        quint32 keycode;
        bool isDown;
        std::chrono::steady_clock::time_point posted;
    };

    std::vector<Stroke> m_strokes;
};

} // namespace tulvane
