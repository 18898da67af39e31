#include <app/DesktopFindings.h>
#include <platform/AudioInput.h>
#include <platform/PrivacyPermissions.h>

namespace tulvane {

namespace {

Finding permissionFinding(const QString& subject, const PrivacyPermissions& permissions,
                          Permission permission, const QString& granted)
{
    const PermissionObstacle obstacle = permissions.obstacle(permission);
    if (obstacle == PermissionObstacle())
        return Finding::good(subject, granted);
    return Finding::bad(subject, obstacle.reason, obstacle.remedy);
}

} // namespace

Findings sessionFindings(const SessionFacts& session)
{
    const QString kind = QStringLiteral("session");
    const QString display = QStringLiteral("display");
    Findings findings;
    if (session.kind == u"none")
        findings.append(Finding::bad(kind, QStringLiteral("There is no desktop session here."),
                                     QStringLiteral("Start Tulvane from your desktop.")));
    else
        findings.append(Finding::good(
            kind, session.desktop.isEmpty() ? session.kind : session.kind + u", " + session.desktop));
    if (session.displayReached)
        findings.append(Finding::good(display, session.display));
    else
        findings.append(Finding::bad(
            display,
            session.display.isEmpty()
                ? QStringLiteral("DISPLAY is not set.")
                : QStringLiteral("The X server %1 does not answer.").arg(session.display),
            QStringLiteral("Start Tulvane in a session with an X server; Wayland desktops bring XWayland.")));
    return findings;
}

Finding microphoneFinding(AudioInput& microphone)
{
    const QString subject = QStringLiteral("microphone");
    const auto engine = microphone.makeEngine();
    const AudioFormat format = engine->inputFormat();
    if (format == AudioFormat())
        return Finding::bad(subject, QStringLiteral("There is none."),
                            QStringLiteral("Connect one, and choose it in the desktop's sound settings."));
    return Finding::good(subject, QStringLiteral("%1 (%2 Hz, %3 ch)")
                                      .arg(engine->deviceName())
                                      .arg(format.sampleRate)
                                      .arg(format.channels));
}

Finding soundServerFinding(const QString& name)
{
    const QString subject = QStringLiteral("sound server");
    if (name.isEmpty())
        return Finding::bad(subject, QStringLiteral("None answers."),
                            QStringLiteral("Start PipeWire (with pipewire-pulse) or PulseAudio."));
    return Finding::good(subject, name);
}

Findings permissionFindings(const PrivacyPermissions& permissions)
{
    return {permissionFinding(QStringLiteral("recording"), permissions, Permission::microphone,
                              QStringLiteral("is allowed")),
            permissionFinding(QStringLiteral("pasting"), permissions, Permission::accessibility,
                              QStringLiteral("is possible")),
            permissionFinding(QStringLiteral("watching keys"), permissions, Permission::inputMonitoring,
                              QStringLiteral("is possible"))};
}

Finding insertionFinding(InsertionMethod method, const PrivacyPermissions& permissions, bool canWriteElements)
{
    const QString subject = QStringLiteral("insertion");
    if (method == InsertionMethod::clipboardOnly)
        return Finding::good(subject, QStringLiteral("copies to the clipboard, as the settings say"));
    if (!permissions.accessibility()) {
        const PermissionObstacle obstacle = permissions.obstacle(Permission::accessibility);
        return Finding::bad(subject, obstacle.reason, obstacle.remedy);
    }
    if (method == InsertionMethod::paste)
        return Finding::good(subject, QStringLiteral("pastes"));
    if (!canWriteElements)
        return Finding::bad(
            subject, QStringLiteral("There is no accessibility bus, so every text is pasted."),
            QStringLiteral("Install at-spi2-core and start the session again, or choose Paste."));
    return Finding::good(subject, QStringLiteral("writes into the field where that works, else pastes"));
}

Finding modelFinding(const ModelFacts& model)
{
    const QString subject = QStringLiteral("model");
    if (model.file.isEmpty())
        return Finding::bad(subject, QStringLiteral("%1 has not been downloaded.").arg(model.id),
                            QStringLiteral("tulvane models download %1").arg(model.id));
    return Finding::good(subject, model.id);
}

Finding acceleratorFinding(const QStringList& devices)
{
    const QString subject = QStringLiteral("accelerator");
    if (devices.isEmpty())
        return Finding::bad(subject, QStringLiteral("The speech library finds nothing to compute with."),
                            QStringLiteral("Install Tulvane again: its backends are missing."));
    return Finding::good(subject, devices.join(QStringLiteral(", ")));
}

} // namespace tulvane
