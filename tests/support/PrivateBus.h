#pragma once

#include <QDBusConnection>
#include <QProcess>
#include <QString>

#include <atomic>

namespace tulvane::test {

/// A session bus of a test's own, which ends with the object.
class PrivateBus final {
public:
    PrivateBus()
    {
        m_daemon.start(QStringLiteral("dbus-daemon"),
                       {QStringLiteral("--session"), QStringLiteral("--nofork"),
                        QStringLiteral("--nopidfile"), QStringLiteral("--print-address=1")});
        while (!m_daemon.canReadLine()) {
            if (!m_daemon.waitForReadyRead())
                qFatal("the bus did not start");
        }
        m_address = QString::fromUtf8(m_daemon.readLine().trimmed());
    }
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;
    ~PrivateBus() { end(); }

    /// As after a crash of the bus; nothing the second time.
    void end()
    {
        m_daemon.kill();
        m_daemon.waitForFinished();
    }
    [[nodiscard]] const QString& address() const { return m_address; }

    /// A new connection at each call.
    [[nodiscard]] QDBusConnection connect() const
    {
        static std::atomic<int> count = 0;
        return QDBusConnection::connectToBus(m_address, QStringLiteral("connection-%1").arg(++count));
    }

private:
    QProcess m_daemon;
    QString m_address;
};

} // namespace tulvane::test
