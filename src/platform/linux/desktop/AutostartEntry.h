#pragma once

#include <ports/LoginItem.h>

namespace tulvane {

/// The login item as the desktops' autostart convention has it: "com.dunio.Tulvane.desktop" in the user's
/// autostart folder. An entry that the desktop's own settings have switched off (hidden, or disabled) does
/// not count as enabled. Main thread.
class AutostartEntry final : public LoginItem {
public:
    /// "autostart" in the user's folder for settings; empty where there is no such folder.
    [[nodiscard]] static QString standardFolder();

    /// `program`: the executable that the desktop is to start, without a window.
    AutostartEntry(QString folder, QString program);

    [[nodiscard]] bool isEnabled() const override;
    [[nodiscard]] Result<void, QString> setEnabled(bool enabled) override;

    [[nodiscard]] QString file() const;

private:
    [[nodiscard]] QByteArray content() const;

    QString m_folder;
    QString m_program;
};

} // namespace tulvane
