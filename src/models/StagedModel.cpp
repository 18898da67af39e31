#include <base/PrivateFolder.h>
#include <models/StagedModel.h>

#include <QFile>
#include <QFileInfo>
#include <QUuid>

#include <chrono>
#include <filesystem>
#include <utility>

namespace tulvane {

namespace {

std::filesystem::path native(const QString& path)
{
    return {path.toStdU16String()};
}

/// A rename that never turns into a copy.
std::error_code renameFile(const QString& from, const QString& to)
{
    std::error_code error;
    std::filesystem::rename(native(from), native(to), error);
    return error;
}

ModelError fileSystemError(const std::error_code& error)
{
    return ModelError::fileSystem(QString::fromStdString(error.message()));
}

QString noteFile(const ModelFolders& folders, const QString& id)
{
    return folders.models + u"/." + id + u".staging";
}

QString lockFile(const ModelFolders& folders, const QString& id)
{
    return folders.models + u"/." + id + u".lock";
}

QString besideTheModels(const ModelFolders& folders, const QString& staged)
{
    return folders.models + u'/' + QFileInfo(staged).fileName();
}

QString readNote(const ModelFolders& folders, const QString& id)
{
    QFile note(noteFile(folders, id));
    return note.open(QIODevice::ReadOnly) ? QString::fromUtf8(note.readAll()) : QString();
}

} // namespace

StagedModel::StagedModel(const ModelFolders& folders, const QString& id) : m_folders(folders), m_id(id) {}

bool StagedModel::take()
{
    Result<FileLock, LockError> lock =
        FileLock::acquire(lockFile(m_folders, m_id), std::chrono::milliseconds(0));
    if (lock)
        m_lock.emplace(std::move(*lock));
    return lock.has_value();
}

Result<std::unique_ptr<StagedModel>, ModelError> StagedModel::adopt(const ModelFolders& folders,
                                                                    const QString& id, const QString& arrived)
{
    makePrivateFolder(folders.models);
    std::unique_ptr<StagedModel> staged(new StagedModel(folders, id));
    const QString name = u"tulvane-" + QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper() + u".bin";
    staged->m_file = folders.temporary + u'/' + name;
    // Without the note, only a kill in the middle costs more: the file is then not found again.
    const bool noted = staged->take();
    if (noted)
        staged->writeNote();
    std::error_code error = renameFile(arrived, staged->m_file);
    if (error) {
        staged->m_file = besideTheModels(folders, name);
        if (noted)
            staged->writeNote();
        error = renameFile(arrived, staged->m_file);
    }
    if (!error)
        return staged;
    staged->discard();
    return failure(fileSystemError(error));
}

StagedModel::Found StagedModel::find(const ModelFolders& folders, const QString& id)
{
    const bool hasNote = QFile::exists(noteFile(folders, id));
    if (!hasNote && !QFile::exists(lockFile(folders, id)))
        return Found::none;
    // A lock that cannot be taken or read is held by no process.
    const auto lock = FileLock::acquire(lockFile(folders, id), std::chrono::milliseconds(0));
    if (!lock && lock.error().isHeld())
        return Found::otherProgram;
    return hasNote ? Found::waiting : Found::none;
}

std::unique_ptr<StagedModel> StagedModel::recover(const ModelFolders& folders, const QString& id)
{
    if (find(folders, id) != Found::waiting)
        return nullptr;
    std::unique_ptr<StagedModel> staged(new StagedModel(folders, id));
    if (!staged->take())
        return nullptr;
    staged->m_file = readNote(folders, id);
    const QString name = QFileInfo(staged->m_file).fileName();
    // The note is a file like any other; what it names must be one of ours before it is touched.
    if (!name.startsWith(u"tulvane-") || !name.endsWith(u".bin")) {
        staged->removeNote();
        return nullptr;
    }
    const QString beside = besideTheModels(folders, name);
    if (QFile::exists(staged->m_file)) {
        // A copy to the models' file system may have been cut short.
        if (beside != staged->m_file)
            QFile::remove(beside);
        return staged;
    }
    staged->m_file = beside;
    if (QFile::exists(beside))
        return staged;
    staged->removeNote();
    return nullptr;
}

Result<void, ModelError> StagedModel::place()
{
    const QString target = m_folders.modelFile(m_id);
    makePrivateFolder(m_folders.models);
    std::error_code error = renameFile(m_file, target);
    if (error == std::errc::cross_device_link) {
        const QString beside = besideTheModels(m_folders, m_file);
        QFile source(m_file);
        if (!source.copy(beside)) {
            QFile::remove(beside);
            return failure(ModelError::fileSystem(source.errorString()));
        }
        QFile::remove(m_file);
        m_file = beside;
        error = renameFile(m_file, target);
    }
    if (error)
        return failure(fileSystemError(error));
    removeNote();
    return {};
}

void StagedModel::discard()
{
    QFile::remove(m_file);
    removeNote();
}

void StagedModel::writeNote() const
{
    QFile note(noteFile(m_folders, m_id));
    if (note.open(QIODevice::WriteOnly | QIODevice::Truncate))
        note.write(m_file.toUtf8());
}

void StagedModel::removeNote()
{
    if (!m_lock)
        return;
    QFile::remove(noteFile(m_folders, m_id));
    m_lock.reset();
}

} // namespace tulvane
