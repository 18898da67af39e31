#include <base/ReplaceFile.h>

#include <QFileInfo>
#include <QSaveFile>

#include <filesystem>

namespace tulvane {

namespace {

/// The library takes a write that a full disk cuts short for a success, and its commit would put the piece in
/// the file's place. So every byte is accounted for here.
bool writeAll(QSaveFile& file, const QByteArray& bytes)
{
    qint64 written = 0;
    while (written < bytes.size()) {
        const qint64 step = file.write(bytes.constData() + written, bytes.size() - written);
        if (step <= 0)
            return false;
        written += step;
    }
    // After a cut write the first flush fails without a reason; the second meets it, or writes the rest.
    return file.flush() || file.flush();
}

} // namespace

Result<void, QString> replaceFile(const QString& path, const QByteArray& bytes)
{
    std::error_code problem;
    std::filesystem::create_directories(QFileInfo(path).filesystemAbsolutePath(), problem);
    if (problem)
        return failure(QString::fromStdString(problem.message()));
    const bool isNew = !QFileInfo::exists(path);
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return failure(file.errorString());
    if (isNew)
        file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    // Without a commit the temporary file goes with the object.
    if (!writeAll(file, bytes) || !file.commit())
        return failure(file.errorString());
    return {};
}

} // namespace tulvane
