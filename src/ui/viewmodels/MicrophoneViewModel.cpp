#include <audio/AudioRecorder.h>
#include <base/Translate.h>
#include <dictation/DictationController.h>
#include <dictation/MicrophoneTest.h>
#include <permissions/PermissionsService.h>
#include <ui/viewmodels/MicrophoneViewModel.h>

#include <utility>

namespace tulvane {

MicrophoneViewModel::MicrophoneViewModel(MicrophoneTest& test, const AudioRecorder& recorder,
                                         const DictationController& controller,
                                         const PermissionsService& permissions, QObject* parent)
    : QObject(parent),
      m_test(test),
      m_recorder(recorder),
      m_controller(controller),
      m_permissions(permissions)
{
    connect(&m_test, &MicrophoneTest::changed, this, &MicrophoneViewModel::changed);
    connect(&m_test, &MicrophoneTest::levelChanged, this, &MicrophoneViewModel::levelChanged);
    connect(&m_recorder, &AudioRecorder::levelChanged, this, &MicrophoneViewModel::levelChanged);
    connect(&m_permissions, &PermissionsService::microphoneChanged, this, &MicrophoneViewModel::refresh);
    connect(&m_controller, &DictationController::phaseChanged, this, [this] {
        // The microphone is the dictation's alone.
        if (isDictating())
            m_test.stop();
        Q_EMIT changed();
    });
    refresh();
}

bool MicrophoneViewModel::isDictating() const
{
    return m_controller.phase().kind == Phase::Kind::recording;
}

bool MicrophoneViewModel::isAllowed() const
{
    return m_permissions.microphone() == MicrophoneAccess::authorized;
}

bool MicrophoneViewModel::isListening() const
{
    return isDictating() || isTesting();
}

float MicrophoneViewModel::level() const
{
    return isTesting() ? m_test.level() : m_recorder.level();
}

bool MicrophoneViewModel::isTesting() const
{
    return m_test.isRunning();
}

bool MicrophoneViewModel::canTest() const
{
    return !isListening() && isAllowed() && !m_controller.isLocked();
}

QString MicrophoneViewModel::answer() const
{
    if (isTesting())
        return translate("Say something…");
    switch (m_test.answer()) {
    case MicrophoneTest::Answer::none:
        return {};
    case MicrophoneTest::Answer::heard:
        return translate("The microphone hears you.");
    case MicrophoneTest::Answer::silent:
        return translate("Nothing was heard. Is it muted, or is another microphone meant?");
    case MicrophoneTest::Answer::failed:
        return m_test.failure();
    }
    Q_UNREACHABLE();
}

bool MicrophoneViewModel::isTroubled() const
{
    return !isTesting() && (m_test.answer() == MicrophoneTest::Answer::silent ||
                            m_test.answer() == MicrophoneTest::Answer::failed);
}

void MicrophoneViewModel::test()
{
    if (!canTest())
        return;
    m_test.start();
    refresh();
}

void MicrophoneViewModel::stop()
{
    m_test.stop();
}

void MicrophoneViewModel::refresh()
{
    const QString now = isAllowed() ? m_test.deviceName() : QString();
    if (std::exchange(m_name, now) != now)
        Q_EMIT nameChanged();
    Q_EMIT changed();
}

} // namespace tulvane
