#include <support/HubServer.h>
#include <support/Paths.h>

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSaveFile>

namespace tulvane::test {

HubServer::HubServer(Scheme scheme)
{
    const bool secure = scheme == Scheme::https;
    QStringList arguments{sourceFolder() + QStringLiteral("/tests/support/hub_server.py"), m_folder.path()};
    if (secure) {
        makeCertificate();
        arguments += {certificate(), keyFile()};
    }
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(QStringLiteral("python3"), arguments);
    if (!m_process.waitForStarted() || !m_process.waitForReadyRead())
        qFatal("the hub server did not start");
    const QString address =
        secure ? QStringLiteral("https://127.0.0.1:%1/") : QStringLiteral("http://127.0.0.1:%1/");
    m_base = QUrl(address.arg(m_process.readLine().trimmed().toInt()));
}

void HubServer::makeCertificate() const
{
    QProcess openssl;
    openssl.start(QStringLiteral("openssl"),
                  {QStringLiteral("req"), QStringLiteral("-x509"), QStringLiteral("-newkey"),
                   QStringLiteral("ec"), QStringLiteral("-pkeyopt"),
                   QStringLiteral("ec_paramgen_curve:prime256v1"), QStringLiteral("-nodes"),
                   QStringLiteral("-days"), QStringLiteral("2"), QStringLiteral("-subj"),
                   QStringLiteral("/CN=127.0.0.1"), QStringLiteral("-addext"),
                   QStringLiteral("subjectAltName=IP:127.0.0.1"), QStringLiteral("-keyout"), keyFile(),
                   QStringLiteral("-out"), certificate()});
    if (!openssl.waitForFinished() || openssl.exitCode() != 0)
        qFatal("no certificate: %s", openssl.readAllStandardError().constData());
}

HubServer::~HubServer()
{
    m_process.closeWriteChannel();
    if (!m_process.waitForFinished())
        m_process.kill();
}

QString HubServer::place(const QString& path) const
{
    const QString file = m_folder.file(u"files/" + path);
    QDir().mkpath(QFileInfo(file).path());
    return file;
}

QUrl HubServer::put(const QString& path, const QByteArray& content) const
{
    QFile file(place(path));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("could not put %s", qPrintable(path));
    return url(path);
}

QUrl HubServer::putSparse(const QString& path, qint64 size, const QByteArray& beginning) const
{
    QFile file(place(path));
    if (!file.open(QIODevice::WriteOnly) || file.write(beginning) != beginning.size() || !file.resize(size))
        qFatal("could not put %s", qPrintable(path));
    return url(path);
}

void HubServer::script(const QString& path, const QList<QJsonObject>& faults)
{
    QJsonArray list;
    for (const QJsonObject& fault : faults)
        list.append(fault);
    m_script.insert(u'/' + path, list);
    // The server notices a change by the text, so the same faults a second time need another one.
    m_script.insert(QStringLiteral("version"), ++m_version);
    QSaveFile file(m_folder.file(QStringLiteral("script.json")));
    if (!file.open(QIODevice::WriteOnly) || file.write(QJsonDocument(m_script).toJson()) < 0 ||
        !file.commit())
        qFatal("could not write the script");
}

QList<QJsonObject> HubServer::requests() const
{
    QList<QJsonObject> list;
    const QList<QByteArray> lines = m_folder.read(QStringLiteral("requests")).split('\n');
    for (const QByteArray& line : lines) {
        if (!line.isEmpty())
            list.append(QJsonDocument::fromJson(line).object());
    }
    return list;
}

} // namespace tulvane::test
