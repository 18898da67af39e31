#pragma once

#include <ports/ModifierEvents.h>

#include <QString>

#include <utility>

namespace tulvane {

/// The modifier events of a desktop that lets no program watch keys.
class NullModifierEvents final : public ModifierEvents {
public:
    explicit NullModifierEvents(QString reason) : m_reason(std::move(reason)) {}

    [[nodiscard]] Result<std::unique_ptr<Tap>, ModifierEventsError>
    createTap(qint64 /*keyCode*/, const Handler& /*handler*/) override
    {
        return failure(ModifierEventsError::unsupported(m_reason));
    }

private:
    QString m_reason;
};

} // namespace tulvane
