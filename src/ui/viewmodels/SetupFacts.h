#pragma once

#include <QObject>

namespace tulvane {

class AppSettings;
class DictationSession;
class KeyboardShortcuts;
class PermissionsService;
class Readiness;
class StatsStore;

struct WhisperModel;

/// What is set up, and what the user has tried.
struct SetupMarks {
    bool microphone = false;     ///< may be recorded from
    bool accessibility = false;  ///< text may be typed for the user
    bool model = false;          ///< the selected model is installed
    bool hotkey = false;         ///< a combination or a single key is set
    bool firstDictation = false; ///< in this run, or in the statistics
    bool vocabulary = false;     ///< more than spaces
    bool holdToTalk = false;     ///< a single key, or a mode in which the key is held

    [[nodiscard]] friend bool operator==(const SetupMarks&, const SetupMarks&) = default;
};

/// How far the setup is, computed from the state of everything at each call: nothing of it is stored.
/// Main thread.
class SetupFacts final : public QObject {
    Q_OBJECT

public:
    /// All collaborators outlive this object.
    SetupFacts(const Readiness& readiness, const AppSettings& settings, const PermissionsService& permissions,
               const KeyboardShortcuts& shortcuts, const DictationSession& session, const StatsStore& stats,
               QObject* parent);

    [[nodiscard]] SetupMarks marks() const;
    /// Whether all is there that a dictation by hotkey needs.
    [[nodiscard]] bool isReady() const;
    /// The selected model; the one that a new user starts with where the stored name is none of the
    /// catalogue's.
    [[nodiscard]] WhisperModel selectedModel() const;

Q_SIGNALS:
    /// A mark differs from its value at the previous signal.
    void changed();

private:
    void compare();

    const Readiness& m_readiness;
    const AppSettings& m_settings;
    const PermissionsService& m_permissions;
    const KeyboardShortcuts& m_shortcuts;
    const DictationSession& m_session;
    const StatsStore& m_stats;
    SetupMarks m_last; ///< as at the last `changed`
};

} // namespace tulvane
