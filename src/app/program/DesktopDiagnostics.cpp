#include <app/program/DesktopDiagnostics.h>
#include <ports/AudioInput.h>
#include <ports/PrivacyPermissions.h>

namespace tulvane {

namespace {

Diagnostic permissionDiagnostic(const QString& subject, const PrivacyPermissions& permissions,
                                Permission permission, const QString& granted)
{
    const PermissionObstacle obstacle = permissions.obstacle(permission);
    if (obstacle == PermissionObstacle())
        return Diagnostic::good(subject, granted);
    return Diagnostic::bad(subject, obstacle.reason, obstacle.remedy);
}

/// "Wayland, KDE" on a desktop that calls itself "KDE" says that once.
QString nameOf(const SessionFacts& session)
{
    if (session.desktop.isEmpty())
        return session.kind;
    const QString kind = session.kind.section(QStringLiteral(", "), -1);
    if (session.desktop.split(u':').contains(kind))
        return session.kind.chopped(kind.size()) + session.desktop;
    return session.kind + u", " + session.desktop;
}

} // namespace

Diagnostics sessionDiagnostics(const SessionFacts& session)
{
    const QString kind = QStringLiteral("session");
    const QString display = QStringLiteral("display");
    Diagnostics diagnostics;
    if (session.kind == u"none")
        diagnostics.append(Diagnostic::bad(kind, QStringLiteral("There is no desktop session here."),
                                           QStringLiteral("Start Tulvane from your desktop.")));
    else
        diagnostics.append(Diagnostic::good(kind, nameOf(session)));
    if (session.displayReached)
        diagnostics.append(Diagnostic::good(display, session.display));
    else
        diagnostics.append(Diagnostic::bad(
            display,
            session.display.isEmpty()
                ? QStringLiteral("DISPLAY is not set.")
                : QStringLiteral("The X server %1 does not answer.").arg(session.display),
            QStringLiteral("Start Tulvane in a session with an X server; Wayland desktops bring XWayland.")));
    return diagnostics;
}

Diagnostic microphoneDiagnostic(AudioInput& microphone)
{
    const QString subject = QStringLiteral("microphone");
    const auto engine = microphone.makeEngine();
    const AudioFormat format = engine->inputFormat();
    if (format == AudioFormat())
        return Diagnostic::bad(subject, QStringLiteral("There is none."),
                               QStringLiteral("Connect one, and choose it in the desktop's sound settings."));
    return Diagnostic::good(subject, QStringLiteral("%1 (%2 Hz, %3 ch)")
                                         .arg(engine->deviceName())
                                         .arg(format.sampleRate)
                                         .arg(format.channels));
}

Diagnostic soundServerDiagnostic(const QString& name)
{
    const QString subject = QStringLiteral("sound server");
    if (name.isEmpty())
        return Diagnostic::bad(subject, QStringLiteral("None answers."),
                               QStringLiteral("Start PipeWire (with pipewire-pulse) or PulseAudio."));
    return Diagnostic::good(subject, name);
}

Diagnostics permissionDiagnostics(const PrivacyPermissions& permissions, bool wantsSingleKey)
{
    Diagnostic watching = permissionDiagnostic(QStringLiteral("watching keys"), permissions,
                                               Permission::inputMonitoring, QStringLiteral("is possible"));
    if (!watching.works && !wantsSingleKey)
        watching = Diagnostic::good(
            watching.subject, QStringLiteral("is not possible, and not needed while no single key is set"));
    return {permissionDiagnostic(QStringLiteral("recording"), permissions, Permission::microphone,
                                 QStringLiteral("is allowed")),
            permissionDiagnostic(QStringLiteral("pasting"), permissions, Permission::accessibility,
                                 QStringLiteral("is possible")),
            watching};
}

Diagnostic insertionDiagnostic(InsertionMethod method, const PrivacyPermissions& permissions,
                               bool canWriteElements)
{
    const QString subject = QStringLiteral("insertion");
    if (method == InsertionMethod::clipboardOnly)
        return Diagnostic::good(subject, QStringLiteral("copies to the clipboard, as the settings say"));
    if (!permissions.accessibility()) {
        const PermissionObstacle obstacle = permissions.obstacle(Permission::accessibility);
        return Diagnostic::bad(subject, obstacle.reason, obstacle.remedy);
    }
    if (method == InsertionMethod::paste)
        return Diagnostic::good(subject, QStringLiteral("pastes"));
    if (!canWriteElements)
        return Diagnostic::bad(
            subject, QStringLiteral("There is no accessibility bus, so every text is pasted."),
            QStringLiteral("Install at-spi2-core and start the session again, or choose Paste."));
    return Diagnostic::good(subject, QStringLiteral("writes into the field where that works, else pastes"));
}

Diagnostics pasteTableDiagnostics(const QStringList& problems)
{
    Diagnostics diagnostics;
    for (const QString& problem : problems)
        diagnostics.append(Diagnostic::bad(
            QStringLiteral("paste table"), problem,
            QStringLiteral("Correct the entry in “terminalWindowClasses” of the settings file.")));
    return diagnostics;
}

Diagnostic modelDiagnostic(const ModelFacts& model)
{
    const QString subject = QStringLiteral("model");
    if (model.file.isEmpty())
        return Diagnostic::bad(subject, QStringLiteral("%1 has not been downloaded.").arg(model.id),
                               QStringLiteral("tulvane models download %1").arg(model.id));
    return Diagnostic::good(subject, model.id);
}

Diagnostic acceleratorDiagnostic(const QStringList& devices)
{
    const QString subject = QStringLiteral("accelerator");
    if (devices.isEmpty())
        return Diagnostic::bad(subject, QStringLiteral("The speech library finds nothing to compute with."),
                               QStringLiteral("Install Tulvane again: its backends are missing."));
    return Diagnostic::good(subject, devices.join(QStringLiteral(", ")));
}

} // namespace tulvane
