#include <speech/whisper/BackendLoader.h>
#include <speech/whisper/ComputingDevices.h>
#include <speech/whisper/LibraryLog.h>

#include <ggml-backend.h>

namespace tulvane {

QStringList computingDevices(const QString& backendFolder)
{
    // What it says while it loads them is for the log.
    LibraryLog::install();
    if (!loadBackends(backendFolder))
        return {};
    QStringList accelerators;
    QStringList processors;
    for (std::size_t i = 0; i < ggml_backend_dev_count(); ++i) {
        auto* const device = ggml_backend_dev_get(i);
        const QString text = QString::fromUtf8(ggml_backend_dev_name(device)) + u": " +
                             QString::fromUtf8(ggml_backend_dev_description(device)).simplified();
        const bool isProcessor = ggml_backend_dev_type(device) == GGML_BACKEND_DEVICE_TYPE_CPU;
        (isProcessor ? processors : accelerators).append(text);
    }
    return accelerators + processors;
}

} // namespace tulvane
