#pragma once

#include <platform/linux/wayland/fields/InputMethodTurn.h>
#include <ports/FocusedElement.h>

#include <chrono>
#include <functional>
#include <memory>

namespace tulvane {

/// Fields that are found over accessibility, and behind those the one that the compositor's input method
/// reaches: of a program that shows nothing, or cannot be written into, over accessibility. Such a field
/// counts only where it shows the text around the caret, since nothing else tells whether a text has arrived.
/// Main thread.
class InputMethodElements final : public FocusedElements {
public:
    /// How long a program may take to say that its field has the focus. One without such fields never does.
    static constexpr std::chrono::milliseconds focusLimit{200};

    /// `mayHaveField`: whether the program in front may have one; it is asked before the input method is
    /// taken.
    InputMethodElements(
        std::shared_ptr<FocusedElements> found, std::shared_ptr<WaylandConnection> connection,
        std::function<bool()> mayHaveField = [] { return true; });
    InputMethodElements(const InputMethodElements&) = delete;
    InputMethodElements& operator=(const InputMethodElements&) = delete;
    /// Every question that is still open is answered, and the input method given back.
    ~InputMethodElements() override;

    [[nodiscard]] QFuture<std::shared_ptr<FocusedElement>> focused() override;

private:
    struct Shared;

    std::shared_ptr<Shared> m_shared;
};

} // namespace tulvane
