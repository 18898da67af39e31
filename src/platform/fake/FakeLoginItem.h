#pragma once

#include <ports/LoginItem.h>

#include <optional>

namespace tulvane {

/// Remembers; refuses while a reason is set.
class FakeLoginItem final : public LoginItem {
public:
    [[nodiscard]] bool isEnabled() const override { return m_enabled; }
    [[nodiscard]] Result<void, QString> setEnabled(bool enabled) override
    {
        if (m_refusal)
            return failure(*m_refusal);
        m_enabled = enabled;
        return {};
    }

    void refuse(const std::optional<QString>& reason) { m_refusal = reason; }

private:
    bool m_enabled = false;
    std::optional<QString> m_refusal;
};

} // namespace tulvane
