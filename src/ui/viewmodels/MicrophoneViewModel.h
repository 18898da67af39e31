#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace tulvane {

class AudioRecorder;
class DictationController;
class MicrophoneTest;
class PermissionsService;

/// The microphone as the windows show it: its name, its level while something listens, and a test of it. Main
/// thread.
class MicrophoneViewModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    /// As its owner knows it; empty while it may not be used, and where there is none
    Q_PROPERTY(QString name READ name NOTIFY nameChanged)
    /// Whether it may be used at all
    Q_PROPERTY(bool allowed READ isAllowed NOTIFY changed)
    /// A dictation or a test listens
    Q_PROPERTY(bool listening READ isListening NOTIFY changed)
    /// 0 to 1, of what listens
    Q_PROPERTY(float level READ level NOTIFY levelChanged)
    Q_PROPERTY(bool testing READ isTesting NOTIFY changed)
    /// Whether a test can begin
    Q_PROPERTY(bool canTest READ canTest NOTIFY changed)
    /// What the last test came to, in words, or what to do during one; empty without one
    Q_PROPERTY(QString answer READ answer NOTIFY changed)
    /// Whether the words are of a microphone that was not heard
    Q_PROPERTY(bool troubled READ isTroubled NOTIFY changed)

public:
    /// All collaborators outlive this object.
    MicrophoneViewModel(MicrophoneTest& test, const AudioRecorder& recorder,
                        const DictationController& controller, const PermissionsService& permissions,
                        QObject* parent);

    [[nodiscard]] const QString& name() const { return m_name; }
    [[nodiscard]] bool isAllowed() const;
    [[nodiscard]] bool isListening() const;
    [[nodiscard]] float level() const;
    [[nodiscard]] bool isTesting() const;
    [[nodiscard]] bool canTest() const;
    [[nodiscard]] QString answer() const;
    [[nodiscard]] bool isTroubled() const;

    /// Listens for three seconds. Not while a dictation does, nor without leave to.
    Q_INVOKABLE void test();
    /// Ends a test; for when what shows it goes out of view.
    Q_INVOKABLE void stop();
    /// Reads again which microphone is the default one.
    Q_INVOKABLE void refresh();

Q_SIGNALS:
    void nameChanged();
    void changed();
    void levelChanged();

private:
    [[nodiscard]] bool isDictating() const;

    MicrophoneTest& m_test;
    const AudioRecorder& m_recorder;
    const DictationController& m_controller;
    const PermissionsService& m_permissions;
    QString m_name;
};

} // namespace tulvane
