#pragma once

#include <support/ScratchFolder.h>

#include <QJsonObject>
#include <QList>
#include <QProcess>
#include <QUrl>

namespace tulvane::test {

/// A model hub of one's own: a real HTTP or HTTPS server process on 127.0.0.1 (hub_server.py), which serves
/// what is put into it and misbehaves as scripted. Ends with this object.
class HubServer final {
public:
    enum class Scheme { http, https };

    explicit HubServer(Scheme scheme = Scheme::http);
    HubServer(const HubServer&) = delete;
    HubServer& operator=(const HubServer&) = delete;
    ~HubServer();

    /// "http://127.0.0.1:PORT/", or https.
    [[nodiscard]] const QUrl& base() const { return m_base; }
    [[nodiscard]] QUrl url(const QString& path) const { return QUrl(m_base.toString() + path); }
    /// Where it speaks HTTPS: the file with its certificate, which it has signed itself.
    [[nodiscard]] QString certificate() const { return m_folder.file(QStringLiteral("certificate.pem")); }
    /// Puts a file at a path (without a slash in front) and returns its address.
    QUrl put(const QString& path, const QByteArray& content) const;
    /// The same with a file of zeros after a beginning, which takes no room.
    QUrl putSparse(const QString& path, qint64 size, const QByteArray& beginning) const;
    /// The faults of the next requests of a path; see hub_server.py.
    void script(const QString& path, const QList<QJsonObject>& faults);
    /// Every request so far.
    [[nodiscard]] QList<QJsonObject> requests() const;

private:
    void makeCertificate() const;
    [[nodiscard]] QString keyFile() const { return m_folder.file(QStringLiteral("key.pem")); }
    [[nodiscard]] QString place(const QString& path) const;

    ScratchFolder m_folder;
    QProcess m_process;
    QUrl m_base;
    QJsonObject m_script;
    int m_version = 0;
};

} // namespace tulvane::test
