#pragma once

#include <base/Result.h>

#include <QString>

namespace tulvane {

/// Whether the desktop starts the application when the user logs in. Main thread; no call waits.
class LoginItem {
public:
    LoginItem() = default;
    LoginItem(const LoginItem&) = delete;
    LoginItem& operator=(const LoginItem&) = delete;
    virtual ~LoginItem() = default;

    /// Read anew at each call: the user can change it elsewhere.
    [[nodiscard]] virtual bool isEnabled() const = 0;
    /// Fails with the reason, in the user's language; then nothing has changed.
    [[nodiscard]] virtual Result<void, QString> setEnabled(bool enabled) = 0;
};

} // namespace tulvane
