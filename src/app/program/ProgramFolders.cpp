#include <app/program/ProgramFolders.h>

#include <QCoreApplication>
#include <QDir>

namespace tulvane {

ProgramFolders ProgramFolders::ofThisProgram()
{
    const QString bin = QCoreApplication::applicationDirPath();
    return {.executables = bin,
            .resources = QDir::cleanPath(bin + QStringLiteral("/../share/tulvane")),
            .backends = QDir::cleanPath(bin + QStringLiteral("/" TULVANE_BACKEND_FOLDER))};
}

} // namespace tulvane
