#pragma once

#include <platform/linux/wayland/fields/InputMethodTurn.h>
#include <ports/FocusedElement.h>

#include <chrono>
#include <memory>

namespace tulvane {

/// The field that the compositor says has the focus, written into by the input method. It shows the text
/// around the caret, from which this object sees whether a text has arrived; the protocol has no request for
/// the whole text.
/// The input method is given back after a write, and with this object. Main thread.
class InputMethodElement final : public FocusedElement {
public:
    /// A message of the protocol holds no longer text, in bytes.
    static constexpr qsizetype longest = 4000;
    /// How long the field's program may take to show what it was sent.
    static constexpr std::chrono::milliseconds arrivalLimit{500};

    explicit InputMethodElement(std::shared_ptr<InputMethodTurn> turn) : m_turn(std::move(turn)) {}
    InputMethodElement(const InputMethodElement&) = delete;
    InputMethodElement& operator=(const InputMethodElement&) = delete;
    ~InputMethodElement() override { m_turn->giveBack(); }

    [[nodiscard]] QFuture<bool> settable() override;
    /// Nothing where the field does not say of what kind it is.
    [[nodiscard]] QFuture<std::optional<QString>> role() override;
    /// True once the field shows the text. False and nothing sent: for a longer text, one whose last line is
    /// blank, for a password, or where the field has gone.
    [[nodiscard]] QFuture<bool> setSelectedText(const QString& text) override;
    [[nodiscard]] bool mayStillArrive() const override { return *m_mayStillArrive; }
    [[nodiscard]] QFuture<std::optional<QString>> value() override;

private:
    std::shared_ptr<InputMethodTurn> m_turn;
    std::shared_ptr<bool> m_mayStillArrive = std::make_shared<bool>(false); ///< of the last write
};

} // namespace tulvane
