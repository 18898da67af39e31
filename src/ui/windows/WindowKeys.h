#pragma once

#include <dictation/SettingsTab.h>
#include <hotkeys/ShortcutRules.h>

#include <QKeySequence>
#include <QList>
#include <QString>

#include <optional>

namespace tulvane {

/// What a key of the program's windows does.
enum class WindowCommand { close, quit, settings, setupGuide, page, nextPage, previousPage, search };

/// A key that the program's own windows take while one of them is in front.
struct WindowKey {
    WindowCommand command = WindowCommand::close;
    Qt::Key key = Qt::Key_W;
    bool withControl = true;              ///< Command on a Mac, as the toolkit has it
    SettingsTab page = SettingsTab::home; ///< of WindowCommand::page alone
    bool everywhere = false;              ///< in the setup guide as well

    [[nodiscard]] QKeySequence sequence() const;
    /// What it does, in the user's language.
    [[nodiscard]] QString title() const;
};

[[nodiscard]] const QList<WindowKey>& windowKeys();

/// Names what one of these keys does, so that none of them is taken for a hotkey. By what stands on the key,
/// since a window goes by that. `hotkeys` outlives what is returned.
[[nodiscard]] ShortcutRules::MenuItemOf windowKeyTitles(const GlobalHotkeys& hotkeys);

} // namespace tulvane
