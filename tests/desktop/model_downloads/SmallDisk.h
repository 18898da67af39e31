#pragma once

#include <QDir>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>

namespace tulvane::test {

/// A small file system in memory, mounted for one test; only root can have one. Invalid where it could not be
/// mounted.
class SmallDisk final {
public:
    explicit SmallDisk(qint64 bytes)
    {
        const QString options = QStringLiteral("size=%1,mode=0755").arg(bytes);
        m_isMounted = run({QStringLiteral("mount"), QStringLiteral("-t"), QStringLiteral("tmpfs"),
                           QStringLiteral("-o"), options, QStringLiteral("tulvane-test"), path()});
    }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;
    ~SmallDisk()
    {
        if (m_isMounted)
            run({QStringLiteral("umount"), QStringLiteral("-l"), path()});
    }

    [[nodiscard]] bool isMounted() const { return m_isMounted; }
    [[nodiscard]] QString path() const { return m_folder.path(); }
    [[nodiscard]] bool resize(qint64 bytes) const
    {
        const QString options = QStringLiteral("remount,size=%1").arg(bytes);
        return run({QStringLiteral("mount"), QStringLiteral("-o"), options, path()});
    }

private:
    static bool run(QStringList words)
    {
        QProcess process;
        const QString program = words.takeFirst();
        process.start(program, words);
        return process.waitForFinished() && process.exitStatus() == QProcess::NormalExit &&
               process.exitCode() == 0;
    }

    QTemporaryDir m_folder;
    bool m_isMounted = false;
};

} // namespace tulvane::test
