#pragma once

#include <platform/GlobalHotKeys.h>
#include <platform/ModifierEvents.h>

#include <QString>

#include <utility>

namespace tulvane {

/// The hot keys of a desktop that has none for programs: it says why, and still writes combinations as Linux
/// desktops do.
class UnsupportedHotKeys final : public GlobalHotKeys {
public:
    explicit UnsupportedHotKeys(QString reason) : m_reason(std::move(reason)) {}

    [[nodiscard]] Result<void, HotKeyError> support() const override;
    [[nodiscard]] Result<std::unique_ptr<Registration>, HotKeyError>
    registerHotKey(HotKeyId id, const KeyCombination& combination) override;
    void setEventHandler(const EventHandler& handler) override;
    void setChangeHandler(const ChangeHandler& handler) override;
    [[nodiscard]] QList<SymbolicHotKey> symbolicHotKeys(const KeyCombination& about) override;
    [[nodiscard]] KeyDisplay display(const KeyCombination& combination) const override;
    [[nodiscard]] std::optional<KeyCombination> combination(const NativeKey& key) const override;

private:
    QString m_reason;
};

/// The modifier events of a desktop that lets no program watch keys.
class UnsupportedModifierEvents final : public ModifierEvents {
public:
    explicit UnsupportedModifierEvents(QString reason) : m_reason(std::move(reason)) {}

    [[nodiscard]] Result<std::unique_ptr<Tap>, ModifierEventsError>
    createTap(qint64 keyCode, const Handler& handler) override;

private:
    QString m_reason;
};

} // namespace tulvane
