#pragma once

#include <QObject>

#include <functional>

namespace tulvane {

class AppSettings;
class ModelSource;
class PermissionsService;

/// What dictating needs, and whether it is there: the one place with this rule. Everything is asked for anew
/// at each call. Main thread.
class Readiness final : public QObject {
    Q_OBJECT

public:
    /// `hasCombination` tells whether a key combination is set. All collaborators outlive this object.
    Readiness(const AppSettings& settings, const PermissionsService& permissions, const ModelSource& models,
              std::function<bool()> hasCombination, QObject* parent = nullptr);

    /// The microphone may be recorded from.
    [[nodiscard]] bool hasMicrophone() const;
    /// The selected model is installed.
    [[nodiscard]] bool hasModel() const;
    /// A combination or a single key is set.
    [[nodiscard]] bool hasHotkey() const;
    /// A dictation is possible, if only from the menu.
    [[nodiscard]] bool canDictate() const { return hasMicrophone() && hasModel(); }
    /// A dictation is possible, and a hotkey starts it.
    [[nodiscard]] bool isComplete() const { return canDictate() && hasHotkey(); }

Q_SIGNALS:
    /// Something that the answers rest on has changed, the key combination excepted.
    void changed();
    /// `canDictate` has another answer than before.
    void canDictateChanged();

private:
    void compare();

    const AppSettings& m_settings;
    const PermissionsService& m_permissions;
    const ModelSource& m_models;
    std::function<bool()> m_hasCombination;
    bool m_couldDictate = false;
};

} // namespace tulvane
