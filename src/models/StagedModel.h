#pragma once

#include <base/FileLock.h>
#include <base/Result.h>
#include <models/ModelError.h>
#include <models/ModelFolders.h>

#include <QString>

#include <memory>
#include <optional>

namespace tulvane {

/// A model file that has arrived and is not in place yet. A note beside the models tells which model it is,
/// so that a later program can go on after this one was killed in the middle, and a lock tells other programs
/// that one is at work on it; the kernel releases the lock of a program that is gone. Destroying it lets go
/// of the lock and keeps file and note. One thread at a time.
class StagedModel final {
public:
    /// Who has an arrived file of a model.
    enum class Found { none, otherProgram, waiting };

    /// Moves an arrived file out of its owner's reach, by a rename: into the temporary folder, else (another
    /// file system) beside the models. A failure leaves it where it is.
    [[nodiscard]] static Result<std::unique_ptr<StagedModel>, ModelError>
    adopt(const ModelFolders& folders, const QString& id, const QString& arrived);
    /// Looks for what an earlier program has left.
    [[nodiscard]] static Found find(const ModelFolders& folders, const QString& id);
    /// Takes over what an earlier program has left; null when there is nothing, or another program is at it.
    [[nodiscard]] static std::unique_ptr<StagedModel> recover(const ModelFolders& folders, const QString& id);

    [[nodiscard]] const QString& file() const { return m_file; }
    /// Puts the file at the model's place, in one step, replacing what is there.
    [[nodiscard]] Result<void, ModelError> place();
    /// Removes the file.
    void discard();

private:
    StagedModel(const ModelFolders& folders, const QString& id);
    [[nodiscard]] bool take();
    void writeNote() const;
    void removeNote();

    ModelFolders m_folders;
    QString m_id;
    QString m_file;
    std::optional<FileLock> m_lock;
};

} // namespace tulvane
