#pragma once

#include <support/ScratchFolder.h>

#include <QFile>
#include <QProcess>
#include <QString>

namespace tulvane::test {

/// A bus at an address of its own, which can end as in a crash and come back. Needs no event loop.
class ReturningBus final {
public:
    ReturningBus() { start(); }
    ReturningBus(const ReturningBus&) = delete;
    ReturningBus& operator=(const ReturningBus&) = delete;
    ~ReturningBus() { kill(); }

    [[nodiscard]] QString address() const { return QStringLiteral("unix:path=") + m_folder.file(m_name); }
    void start()
    {
        m_daemon.start(QStringLiteral("dbus-daemon"),
                       {QStringLiteral("--session"), QStringLiteral("--nofork"),
                        QStringLiteral("--nopidfile"), QStringLiteral("--print-address=1"),
                        QStringLiteral("--address=") + address()});
        while (!m_daemon.canReadLine()) {
            if (!m_daemon.waitForReadyRead())
                qFatal("the bus did not start");
        }
    }
    void kill()
    {
        m_daemon.kill();
        m_daemon.waitForFinished();
        QFile::remove(m_folder.file(m_name));
    }

private:
    ScratchFolder m_folder;
    QString m_name = QStringLiteral("bus");
    QProcess m_daemon;
};

} // namespace tulvane::test
