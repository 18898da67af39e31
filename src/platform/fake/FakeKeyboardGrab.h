#pragma once

#include <ports/KeyboardGrab.h>

namespace tulvane {

/// Keeps who has the keyboard.
class FakeKeyboardGrab final : public KeyboardGrab {
public:
    [[nodiscard]] std::unique_ptr<Hold> hold(QWindow& window) override
    {
        if (isRefused || holder)
            return nullptr;
        holder = &window;
        return std::make_unique<Kept>(*this);
    }

    QWindow* holder = nullptr; ///< compared only
    bool isRefused = false;    ///< as on a desktop that gives it to no program

private:
    class Kept final : public Hold {
    public:
        explicit Kept(FakeKeyboardGrab& keyboard) : m_keyboard(keyboard) {}
        Kept(const Kept&) = delete;
        Kept& operator=(const Kept&) = delete;
        ~Kept() override { m_keyboard.holder = nullptr; }

    private:
        FakeKeyboardGrab& m_keyboard;
    };
};

} // namespace tulvane
