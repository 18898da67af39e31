#include <stats/DamagedFile.h>

#include <QFile>
#include <QFileInfo>

#include <filesystem>

namespace tulvane {

namespace {

/// More damaged files than these are not kept: something is wrong that copies don't help against.
constexpr int most = 9;

QString nameOf(const QString& path, int number)
{
    const QString name = path + QStringLiteral(".damaged");
    return number == 1 ? name : name + u'-' + QString::number(number);
}

} // namespace

void keepDamagedFile(const QString& path)
{
    for (int number = 1; number <= most; ++number) {
        const QString name = nameOf(path, number);
        if (QFileInfo::exists(name))
            continue;
        // A link keeps even a file that we may not read, and there is no moment without either name. Where
        // the path is a symbolic link, it is the target's bytes that are about to go.
        std::error_code problem;
        std::filesystem::create_hard_link(QFileInfo(path).filesystemCanonicalFilePath(),
                                          QFileInfo(name).filesystemAbsoluteFilePath(), problem);
        if (problem)
            QFile::copy(path, name);
        return;
    }
}

void removeDamagedFiles(const QString& path)
{
    for (int number = 1; number <= most; ++number)
        QFile::remove(nameOf(path, number));
}

} // namespace tulvane
