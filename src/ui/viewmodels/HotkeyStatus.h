#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>

namespace tulvane {

class AppSettings;
class HotkeyController;
class KeyboardShortcuts;

/// The hotkeys that are set, the combination and the single key, in words, and whether they work. Main
/// thread.
class HotkeyStatus final : public QObject {
    Q_OBJECT

public:
    /// The collaborators outlive this object.
    HotkeyStatus(const AppSettings& settings, const KeyboardShortcuts& shortcuts,
                 const HotkeyController& hotkeys, QObject* parent = nullptr);

    /// Both hotkeys in one phrase, for a sentence.
    [[nodiscard]] QString description() const;
    /// What the user does with the hotkey: "Press" or "Hold down".
    [[nodiscard]] QString verb() const;
    /// The keys of each hotkey that is set, the combination's first.
    [[nodiscard]] QList<QStringList> caps() const;
    [[nodiscard]] bool isCombinationBroken() const;
    /// Whether hotkeys are set, and none of them has an effect.
    [[nodiscard]] bool isOfNoUse() const;
    /// The first hotkey that has no effect, as it stands on the keys, and why; empty where each one works.
    [[nodiscard]] QString broken() const;
    [[nodiscard]] QString brokenReason() const;

Q_SIGNALS:
    void changed();

private:
    const AppSettings& m_settings;
    const KeyboardShortcuts& m_shortcuts;
    const HotkeyController& m_hotkeys;
};

} // namespace tulvane
