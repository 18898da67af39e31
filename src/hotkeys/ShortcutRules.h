#pragma once

#include <ports/GlobalHotkeys.h>
#include <ports/KeyCombination.h>

#include <QString>

#include <functional>
#include <optional>

namespace tulvane {

/// Which combinations the user may set. Main thread.
class ShortcutRules final {
public:
    /// The title of the menu item of ours that uses the combination; none where none does.
    using MenuItemOf = std::function<std::optional<QString>(const KeyCombination&)>;

    enum class Verdict {
        accepted,
        notACombination, ///< no message; the field beeps
        refused,         ///< in use already: `message` says by what
    };
    struct Answer {
        Verdict verdict = Verdict::accepted;
        QString message;
    };

    /// `hotkeys` outlives this object.
    explicit ShortcutRules(GlobalHotkeys& hotkeys, MenuItemOf menuItemOf = {});

    [[nodiscard]] Answer judge(const KeyCombination& combination) const;

private:
    [[nodiscard]] bool isUsedBySystem(const KeyCombination& combination) const;

    GlobalHotkeys& m_hotkeys;
    MenuItemOf m_menuItemOf;
};

} // namespace tulvane
