#pragma once

#include <app/cli/Console.h>
#include <app/program/Diagnostic.h>
#include <ports/RemoteControl.h>

#include <QStringList>

#include <functional>

namespace tulvane::cli {

/// What `doctor` asks.
struct DoctorContext {
    RemoteControl& remote;
    std::function<Examination()> examine;
};

/// `tulvane doctor [--json]`: what works here and what does not, each with its reason and its remedy. Ends
/// with `failed` where something does not. Main thread.
[[nodiscard]] int runDoctor(const QStringList& arguments, const DoctorContext& context, Console& console);

} // namespace tulvane::cli
