#pragma once

#include <QDir>
#include <QStandardPaths>
#include <QString>

namespace tulvane {

/// Where model files live and pass through. Paths only; nothing is made here.
struct ModelFolders {
    QString models;    ///< the checked files
    QString temporary; ///< where an arrived file waits while it is checked

    /// Tulvane/Models under the user's application data, and the system's temporary directory.
    [[nodiscard]] static ModelFolders standard()
    {
        const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
        return {data + QStringLiteral("/Tulvane/Models"), QDir::tempPath()};
    }
    /// Partial downloads: beside the models' folder, or, where that is a link to another disk, within it, so
    /// that a finished one moves by a rename, whatever its size.
    [[nodiscard]] QString transfers() const;
    [[nodiscard]] QString modelFile(const QString& id) const { return models + u'/' + id + u".bin"; }
    [[nodiscard]] QString encoder(const QString& id) const
    {
        return models + u'/' + id + u"-encoder.mlmodelc";
    }
};

} // namespace tulvane
