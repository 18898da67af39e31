#pragma once

#include <app/program/Diagnostic.h>
#include <ports/SessionFacts.h>
#include <settings/InsertionMethod.h>

#include <QStringList>

#include <optional>

namespace tulvane {

class AudioInput;
class PrivacyPermissions;

/// The selected speech model.
struct ModelFacts {
    QString id;
    QString file; ///< empty while it has not been downloaded
};

[[nodiscard]] Diagnostics sessionDiagnostics(const SessionFacts& session);
/// Asks the sound server for the default microphone; opens none.
[[nodiscard]] Diagnostic microphoneDiagnostic(AudioInput& microphone);
/// `name` as the server calls itself; empty where none answers.
[[nodiscard]] Diagnostic soundServerDiagnostic(const QString& name);
/// The three permissions, each "no" with its reason and its remedy. Keys are watched for a hotkey that is a
/// single key alone: without one, it is no trouble that they cannot be.
[[nodiscard]] Diagnostics permissionDiagnostics(const PrivacyPermissions& permissions, bool wantsSingleKey);
/// Which way a text will take into the program in front. `canWriteElements`: whether there is an
/// accessibility bus.
[[nodiscard]] Diagnostic insertionDiagnostic(InsertionMethod method, const PrivacyPermissions& permissions,
                                             bool canWriteElements);
/// One line for each entry of the settings' paste table that makes no sense; none where all do.
[[nodiscard]] Diagnostics pasteTableDiagnostics(const QStringList& problems);
[[nodiscard]] Diagnostic modelDiagnostic(const ModelFacts& model);
/// `devices` as the speech library names them, those that are more than a processor first.
[[nodiscard]] Diagnostic acceleratorDiagnostic(const QStringList& devices);

} // namespace tulvane
