#include <speech/whisper/BackendLoader.h>

#include <QDir>
#include <QFile>
#include <QMutex>
#include <QMutexLocker>
#include <QSet>

#include <ggml-backend.h>

namespace tulvane {

void ignoreBackendsOfTheEnvironment()
{
    qunsetenv("GGML_BACKEND_PATH");
}

bool loadBackends(const QString& folder)
{
    static QMutex mutex;
    static QSet<QString> loaded;
    const QMutexLocker lock(&mutex);
    if (QDir::isAbsolutePath(folder) && QDir(folder).exists() && !loaded.contains(folder)) {
        loaded.insert(folder);
        ggml_backend_load_all_from_path(QFile::encodeName(folder).constData());
    }
    return ggml_backend_dev_by_type(GGML_BACKEND_DEVICE_TYPE_CPU) != nullptr;
}

bool loadDeviceBackend(const QString& library, quint32 device)
{
    qputenv("GGML_VK_VISIBLE_DEVICES", QByteArray::number(device));
    if (!QDir::isAbsolutePath(library) ||
        ggml_backend_load(QFile::encodeName(library).constData()) == nullptr)
        return false;
    return ggml_backend_dev_by_type(GGML_BACKEND_DEVICE_TYPE_GPU) != nullptr ||
           ggml_backend_dev_by_type(GGML_BACKEND_DEVICE_TYPE_IGPU) != nullptr;
}

} // namespace tulvane
