#pragma once

#include <platform/WholeKeyboard.h>

namespace tulvane {

/// Keeps who has the keyboard.
class FakeWholeKeyboard final : public WholeKeyboard {
public:
    [[nodiscard]] std::unique_ptr<Hold> hold(QWindow& window) override
    {
        if (isRefused || holder)
            return nullptr;
        holder = &window;
        return std::make_unique<Kept>(*this);
    }

    QWindow* holder = nullptr; ///< compared only
    bool isRefused = false;    ///< as on a desktop that gives it to nobody

private:
    class Kept final : public Hold {
    public:
        explicit Kept(FakeWholeKeyboard& keyboard) : m_keyboard(keyboard) {}
        Kept(const Kept&) = delete;
        Kept& operator=(const Kept&) = delete;
        ~Kept() override { m_keyboard.holder = nullptr; }

    private:
        FakeWholeKeyboard& m_keyboard;
    };
};

} // namespace tulvane
