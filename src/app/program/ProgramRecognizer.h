#pragma once

#include <speech/Recognizer.h>

#include <QStringList>

#include <memory>

namespace tulvane {

class SystemMemory;

/// The recogniser of this process, made by the first call; `memory` is kept. It is never destroyed: the
/// speech library cannot be made to end a transcription early, and neither the user nor the next start of the
/// program should wait for one when the process ends. Needs the QCoreApplication; main thread.
[[nodiscard]] Recognizer& programRecognizer(std::shared_ptr<const SystemMemory> memory);

/// What the recogniser of this program can compute with: accelerators first, each by its description
/// ("CPU: ..." for the processor). Needs the QCoreApplication; main thread.
[[nodiscard]] QStringList programComputingDevices();

} // namespace tulvane
