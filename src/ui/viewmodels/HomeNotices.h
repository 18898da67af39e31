#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace tulvane {

class AppSettings;
class ComputingStatus;
class DictationController;
class DictationSession;
class HistoryViewModel;
class HotkeyStatus;

/// What the home page reports beyond a passing notice, because the user can do something about it: a
/// recording that could not be transcribed, a text that could not be inserted, a hotkey that does not work.
/// Main thread.
class HomeNotices final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    /// Whether there is a recording that could not be transcribed; `failure` says why.
    Q_PROPERTY(bool canRetry READ canRetry NOTIFY retryChanged)
    Q_PROPERTY(QString failure READ failure NOTIFY retryChanged)
    /// Whether the last text was left on the clipboard although it was to be inserted.
    Q_PROPERTY(bool isTextLeft READ isTextLeft NOTIFY textLeftChanged)
    /// Whether a part of what the user had copied could not be put back after the last text.
    Q_PROPERTY(bool isClipboardLost READ isClipboardLost NOTIFY textLeftChanged)
    Q_PROPERTY(QString copyLabel READ copyLabel NOTIFY copyLabelChanged)
    /// Which hotkey does nothing, in a sentence, and why; empty when each one works.
    Q_PROPERTY(QString brokenHotkey READ brokenHotkey NOTIFY hotkeyChanged)
    Q_PROPERTY(QString brokenHotkeyReason READ brokenHotkeyReason NOTIFY hotkeyChanged)
    /// The name of the control that sets the one that does nothing.
    Q_PROPERTY(QString brokenControl READ brokenControl NOTIFY hotkeyChanged)
    /// What became of a damaged or unreadable settings file, and where it lies; empty while all is well.
    Q_PROPERTY(QString settingsTrouble READ settingsTrouble NOTIFY settingsTroubleChanged)
    /// Whether a graphics card failed, and the user has not read it yet.
    Q_PROPERTY(bool hasCardFailed READ hasCardFailed NOTIFY cardFailedChanged)

public:
    /// `recent` lists the last text first; `computing` is null where models always run on the processor. All
    /// collaborators outlive this object.
    HomeNotices(const DictationSession& session, DictationController& controller, const AppSettings& settings,
                const HotkeyStatus& hotkey, HistoryViewModel& recent, const ComputingStatus* computing,
                QObject* parent);

    [[nodiscard]] bool canRetry() const;
    [[nodiscard]] QString failure() const;
    [[nodiscard]] bool isTextLeft() const;
    [[nodiscard]] bool isClipboardLost() const;
    [[nodiscard]] QString copyLabel() const;
    [[nodiscard]] QString brokenHotkey() const;
    [[nodiscard]] QString brokenHotkeyReason() const;
    [[nodiscard]] QString brokenControl() const;
    [[nodiscard]] QString settingsTrouble() const;
    [[nodiscard]] bool hasCardFailed() const { return m_hasCardFailed; }

    /// Transcribes the recording once more. Our own window is in front, so that the text goes to the
    /// clipboard rather than into it.
    Q_INVOKABLE void retry();
    /// Puts the last text on the clipboard again, where something else may stand by now.
    Q_INVOKABLE void copyLastText();
    /// The user has read them: the notices about the last text go.
    Q_INVOKABLE void hideTextLeft();
    /// The user has read that the card failed.
    Q_INVOKABLE void hideCardFailed();

Q_SIGNALS:
    void retryChanged();
    void textLeftChanged();
    void copyLabelChanged();
    void hotkeyChanged();
    void settingsTroubleChanged();
    void cardFailedChanged();

private:
    void notePhase();
    void noteDelivery();
    void setCardFailed(bool hasFailed);

    const DictationSession& m_session;
    DictationController& m_controller;
    const AppSettings& m_settings;
    const HotkeyStatus& m_hotkey;
    HistoryViewModel& m_recent;
    QString m_reason; ///< of the last failure; empty when it came before this object
    bool m_isHidden = false;
    bool m_hasCardFailed = false;
};

} // namespace tulvane
