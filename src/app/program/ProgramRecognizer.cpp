#include <app/program/ProgramFolders.h>
#include <app/program/ProgramRecognizer.h>
#include <ports/SystemMemory.h>
#include <speech/whisper/ComputingDevices.h>
#include <speech/whisper/WhisperEngine.h>

namespace tulvane {

Recognizer& programRecognizer(std::shared_ptr<const SystemMemory> memory)
{
    static const auto* const kept = new std::shared_ptr(std::move(memory));
    static auto* const engine = new WhisperEngine(ProgramFolders::ofThisProgram().backends, **kept);
    return *engine;
}

QStringList programComputingDevices()
{
    return computingDevices(ProgramFolders::ofThisProgram().backends);
}

} // namespace tulvane
