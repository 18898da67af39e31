#pragma once

#include <ports/GlobalHotkeys.h>

#include <QString>

#include <utility>

namespace tulvane {

/// The hot keys of a desktop that has none for programs: it says why, and still writes combinations as Linux
/// desktops do.
class NullHotkeys final : public GlobalHotkeys {
public:
    explicit NullHotkeys(QString reason) : m_reason(std::move(reason)) {}

    [[nodiscard]] Result<void, HotkeyError> support() const override;
    [[nodiscard]] Result<std::unique_ptr<Registration>, HotkeyError>
    registerHotkey(HotkeyId id, const KeyCombination& combination) override;
    void setEventHandler(const EventHandler& handler) override;
    void setChangeHandler(const ChangeHandler& handler) override;
    [[nodiscard]] QList<SymbolicHotkey> symbolicHotkeys(const KeyCombination& about) override;
    [[nodiscard]] KeyDisplay display(const KeyCombination& combination) const override;
    [[nodiscard]] std::optional<KeyCombination> combination(const NativeKey& key) const override;

private:
    QString m_reason;
};

} // namespace tulvane
