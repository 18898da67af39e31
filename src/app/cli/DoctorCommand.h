#pragma once

#include <app/program/Diagnostic.h>
#include <app/cli/Console.h>
#include <ports/RemoteControl.h>

#include <QStringList>

#include <functional>

namespace tulvane::cli {

/// What `doctor` asks.
struct DoctorContext {
    RemoteControl& remote;
    /// What any process can find out, in the order of the report; the hotkeys, which only the running program
    /// knows, come after the line at `hotkeysAfter`.
    std::function<Diagnostics()> examine;
    qsizetype hotkeysAfter = 0;
};

/// `tulvane doctor [--json]`: what works here and what does not, each with its reason and its remedy. Ends
/// with `failed` where something does not. Main thread.
[[nodiscard]] int runDoctor(const QStringList& arguments, const DoctorContext& context, Console& console);

} // namespace tulvane::cli
