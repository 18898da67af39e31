#pragma once

#include <memory>

namespace tulvane {

/// Lets a coroutine or a callback see whether its owner still exists: the owner has a Lifetime as a member,
/// and a coroutine of it takes a guard before its first wait and looks at the guard after each. A QObject
/// needs none, because QPointer does the same. Main thread.
///
///     const Lifetime::Guard owner = m_lifetime.guard();
///     const auto answer = co_await m_port.ask();
///     if (!owner)
///         co_return;
class Lifetime final {
public:
    class Guard {
    public:
        /// Whether the owner still exists.
        [[nodiscard]] explicit operator bool() const { return !m_token.expired(); }

    private:
        friend class Lifetime;
        explicit Guard(const std::shared_ptr<const int>& token) : m_token(token) {}
        std::weak_ptr<const int> m_token;
    };

    Lifetime() = default;
    Lifetime(const Lifetime&) = delete;
    Lifetime& operator=(const Lifetime&) = delete;
    ~Lifetime() = default;

    [[nodiscard]] Guard guard() const { return Guard(m_token); }
    /// Counts the owner as gone from here on: what its destructor still resumes must not touch it.
    void end() { m_token.reset(); }

private:
    std::shared_ptr<const int> m_token = std::make_shared<const int>(0);
};

} // namespace tulvane
