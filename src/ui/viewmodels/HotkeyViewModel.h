#pragma once

#include <settings/HotkeyMode.h>
#include <ui/viewmodels/ShortcutFieldViewModel.h>

#include <QObject>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

#include <optional>
#include <utility>

namespace tulvane {

class AppSettings;
class HotkeyController;
class PermissionsService;

/// How dictation is started and stopped: the mode, the single key, and the field of the key combination. Main
/// thread.
class HotkeyViewModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    /// Objects with `value`, `title` and `explanation`.
    Q_PROPERTY(QVariantList modes READ modes CONSTANT)
    Q_PROPERTY(QString mode READ mode WRITE setMode NOTIFY modeChanged)
    /// Objects with `value` and `title`.
    Q_PROPERTY(QVariantList singleKeys READ singleKeys CONSTANT)
    Q_PROPERTY(QString singleKey READ singleKey WRITE setSingleKey NOTIFY singleKeyChanged)
    /// Whether keys may be watched, as far as the choice needs that.
    Q_PROPERTY(Watching watching READ watching NOTIFY singleKeyChanged)
    /// Why they may not, and what to do; empty where the desktop does not say.
    Q_PROPERTY(QString watchingObstacle READ watchingObstacle NOTIFY singleKeyChanged)
    /// Why pressing the key does nothing all the same; empty where it works.
    Q_PROPERTY(QString singleKeyProblem READ singleKeyProblem NOTIFY singleKeyChanged)
    /// Whether a single key means reading every key here, which the user allows first.
    Q_PROPERTY(bool readsEveryKey READ readsEveryKey CONSTANT)
    /// What that is, before it is allowed.
    Q_PROPERTY(QString whatReadingMeans READ whatReadingMeans CONSTANT)
    Q_PROPERTY(bool mayRead READ mayRead WRITE setMayRead NOTIFY singleKeyChanged)
    Q_PROPERTY(tulvane::ShortcutFieldViewModel* field READ field CONSTANT)

public:
    enum class Watching { Unneeded, Granted, Missing };
    Q_ENUM(Watching)

    /// All collaborators outlive this object.
    HotkeyViewModel(AppSettings& settings, PermissionsService& permissions, const HotkeyController& hotkeys,
                    ShortcutFieldViewModel& field, QObject* parent);

    [[nodiscard]] static QVariantList modes();
    [[nodiscard]] QString mode() const;
    /// An unknown value changes nothing; likewise for the key.
    void setMode(const QString& mode);
    [[nodiscard]] static QVariantList singleKeys();
    [[nodiscard]] QString singleKey() const;
    /// Also asks for leave to watch the key, where that is missing.
    void setSingleKey(const QString& key);
    [[nodiscard]] Watching watching() const;
    [[nodiscard]] QString watchingObstacle() const;
    [[nodiscard]] QString singleKeyProblem() const;
    [[nodiscard]] bool readsEveryKey() const;
    [[nodiscard]] static QString whatReadingMeans();
    [[nodiscard]] bool mayRead() const;
    void setMayRead(bool may);
    [[nodiscard]] ShortcutFieldViewModel* field() const { return &m_field; }

    Q_INVOKABLE void openInputMonitoringSettings() const;
    /// Has a stale decision forgotten, and asks anew. Blocks until the first is done.
    Q_INVOKABLE void resetInputMonitoring() const;

    /// What the user reads under the choice.
    [[nodiscard]] static QString explanation(HotkeyMode mode);

Q_SIGNALS:
    void modeChanged();
    void singleKeyChanged();

private:
    void compareWatching();

    AppSettings& m_settings;
    PermissionsService& m_permissions;
    const HotkeyController& m_hotkeys;
    ShortcutFieldViewModel& m_field;
    std::optional<std::pair<bool, QString>> m_lastWatching; ///< as last published
};

} // namespace tulvane
