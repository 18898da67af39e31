#pragma once

#include <platform/linux/atspi/AccessibilityBus.h>

#include <QCoroTask>
#include <QDeadlineTimer>

#include <chrono>
#include <memory>
#include <optional>
#include <vector>

namespace tulvane {

/// An element that has the keyboard focus, and the window that it is in.
struct FocusedAccessible {
    Accessible element;
    Accessible window;
};

/// One search for the focused element, through the windows that are in front. Main thread.
///
/// It answers with an element only when it is sure: among the programs that may be in front, one that stays
/// silent, or has too large a window to be searched, may have the focus just as well, and a text in the wrong
/// program is worse than none.
class FocusSearch final {
public:
    static constexpr std::chrono::milliseconds limit{300};
    /// Objects looked at, in all.
    static constexpr int mostObjects = 3000;
    static constexpr int mostLevels = 80;
    /// An object with more children than this is a table or a list, and asking for all of them may hold up
    /// its program for long.
    static constexpr int mostChildren = 256;

    explicit FocusSearch(std::shared_ptr<AccessibilityBus> bus) : m_bus(std::move(bus)) {}

    [[nodiscard]] QCoro::Task<std::optional<FocusedAccessible>> run();

private:
    using Accessibles = QList<Accessible>;
    struct Level;

    /// Those that may have the focus: all of them where the desktop does not tell which program is in front.
    QCoro::Task<Accessibles> inFront(Accessibles programs);
    /// Nothing from those below means: unknown. An object that has gone has no children and no states.
    QCoro::Task<std::optional<QList<FocusedAccessible>>> focusedIn(Accessible program);
    QCoro::Task<std::optional<QList<FocusedAccessible>>> focusedBelow(Accessible window);
    QCoro::Task<std::optional<Accessibles>> children(Accessible parent);
    QCoro::Task<std::optional<Level>> look(Accessibles objects);
    QCoro::Task<std::optional<Accessibles>> childrenOf(Accessibles parents);
    QCoro::Task<std::optional<std::vector<AccessibleStates>>> statesOf(Accessibles objects);

    [[nodiscard]] AccessibilityBus::Limit remaining() const;

    std::shared_ptr<AccessibilityBus> m_bus;
    QDeadlineTimer m_deadline{limit};
    int m_objects = 0;
};

} // namespace tulvane
