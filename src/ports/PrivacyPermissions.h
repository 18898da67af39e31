#pragma once

#include <ports/Obstacle.h>

#include <QFuture>

namespace tulvane {

enum class MicrophoneAccess { notDetermined, restricted, denied, authorized };

/// The three things that a desktop may let a program do, or not.
enum class Permission { microphone, accessibility, inputMonitoring };

/// Why something is not permitted or not possible here.
using PermissionObstacle = Obstacle;

/// The desktop's privacy decisions about this program. Main thread. The reads are cheap and never prompt.
class PrivacyPermissions {
public:
    PrivacyPermissions() = default;
    PrivacyPermissions(const PrivacyPermissions&) = delete;
    PrivacyPermissions& operator=(const PrivacyPermissions&) = delete;
    virtual ~PrivacyPermissions() = default;

    [[nodiscard]] virtual MicrophoneAccess microphone() const = 0;
    /// Whether posted keys reach the program in front, and its elements may be written to.
    [[nodiscard]] virtual bool accessibility() const = 0;
    /// Whether key events can be watched while another program has the focus.
    [[nodiscard]] virtual bool inputMonitoring() const = 0;

    /// May prompt; finishes, with a result, once the user has answered.
    [[nodiscard]] virtual QFuture<bool> requestMicrophone() = 0;
    /// May prompt, and returns at once.
    virtual void requestAccessibility() = 0;
    virtual void requestInputMonitoring() = 0;

    /// Whether a request for it has the desktop ask the user in a dialog of its own.
    [[nodiscard]] virtual bool asksUser(Permission /*permission*/) const { return false; }

    /// Why the read of this permission answers "no".
    [[nodiscard]] virtual PermissionObstacle obstacle(Permission permission) const = 0;
};

} // namespace tulvane
