#include <speech/whisper/ModelFile.h>

#include <QFileInfo>

namespace tulvane {

Result<std::unique_ptr<QFile>, QString> openModelFile(const QString& path)
{
    const QFileInfo info(path);
    if (info.exists() && !info.isFile())
        return failure(QStringLiteral("not a plain file"));
    auto file = std::make_unique<QFile>(path);
    if (!file->open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return failure(file->errorString());
    return file;
}

} // namespace tulvane
