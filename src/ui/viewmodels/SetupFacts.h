#pragma once

#include <ui/UiContext.h>

#include <QObject>

namespace tulvane {

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

/// Tells how far the setup is, from the state of everything at the moment of asking: nothing of it is stored.
/// Main thread.
class SetupFacts final : public QObject {
    Q_OBJECT

public:
    SetupFacts(const UiContext& context, QObject* parent);

    [[nodiscard]] SetupMarks marks() const;
    /// The selected model; the one that a new user starts with where the stored name is none of the
    /// catalogue's.
    [[nodiscard]] WhisperModel selectedModel() const;

Q_SIGNALS:
    /// A mark is another one than when this was last told.
    void changed();

private:
    void compare();

    UiContext m_context;
    SetupMarks m_told;
};

} // namespace tulvane
