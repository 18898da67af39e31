#pragma once

#include <ports/Confinement.h>
#include <speech/Recognizer.h>
#include <speech/device/ComputingStatus.h>

#include <QStringList>

#include <memory>

namespace tulvane {

class GraphicsCards;
class HelperProcesses;
class LocalServices;
class SystemMemory;

/// What of the system the recogniser uses. It keeps all.
struct RecognizerServices {
    std::shared_ptr<const SystemMemory> memory;
    std::shared_ptr<const HelperProcesses> helpers;
    std::shared_ptr<const GraphicsCards> cards;
    ConfineThread confinement;
    /// The first load waits until a device that has never worked here has been tried.
    bool waitsForTrial = false;

    /// As a process without a desktop has them; `services` lives on in them.
    [[nodiscard]] static RecognizerServices of(const std::shared_ptr<LocalServices>& services);
};

/// The recogniser of this process, made by the first call, on the graphics card where there is one and the
/// backend for it is installed. It is never destroyed: the speech library cannot be made to end a
/// transcription early, and neither the user nor the next start of the program should wait for one when the
/// process ends. Needs the QCoreApplication; main thread.
[[nodiscard]] Recognizer& programRecognizer(const RecognizerServices& services);

/// What that recogniser is asked to compute with, and where it does. As long as the process; main thread.
[[nodiscard]] ComputingStatus& programComputing();

/// What the recogniser of this program can compute with on the processor ("CPU: ..."). Needs the
/// QCoreApplication; main thread.
[[nodiscard]] QStringList programComputingDevices();

/// What the drivers of this machine offer besides, asked through a helper; waits for it. Empty, too, where
/// the backend for it is not installed. Needs the QCoreApplication; main thread.
[[nodiscard]] ComputingDevices programDevices(const HelperProcesses& helpers);

/// What a model takes on a device; 0 where that cannot be read from its file. Any thread.
[[nodiscard]] qint64 deviceMemoryOf(const QString& modelFile);

/// How the trials of this machine's devices went. Needs the QCoreApplication.
[[nodiscard]] TrialRecord programTrials();

/// Whether the backend for graphics cards is installed. Needs the QCoreApplication.
[[nodiscard]] bool hasDeviceBackend();

} // namespace tulvane
