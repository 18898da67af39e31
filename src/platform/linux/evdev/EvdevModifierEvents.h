#pragma once

#include <ports/ModifierEvents.h>

#include <QString>

#include <utility>

namespace tulvane {

/// Modifier keys by the kernel's own devices, on any desktop: both edges, left and right told apart, and
/// keyboards that are plugged in later join. The user has to be in the group that may read them, which lets
/// every program of the user read every key: only for a user who has chosen a single key and been told so.
class EvdevModifierEvents final : public ModifierEvents {
public:
    explicit EvdevModifierEvents(QString folder = QStringLiteral("/dev/input")) : m_folder(std::move(folder))
    {
    }

    [[nodiscard]] bool readsEveryKey() const override { return true; }
    [[nodiscard]] Result<std::unique_ptr<Tap>, ModifierEventsError>
    createTap(qint64 keyCode, const Handler& handler) override;

private:
    QString m_folder;
};

} // namespace tulvane
