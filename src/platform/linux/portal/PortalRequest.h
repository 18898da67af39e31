#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QString>
#include <QVariantMap>

namespace tulvane {

/// One question to the desktop's portal, whose answer may wait for a dialog that the user sees. Main thread.
/// Once the object has gone nothing is reported.
class PortalRequest final : public QObject {
    Q_OBJECT

public:
    static inline const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
    static inline const QString path = QStringLiteral("/org/freedesktop/portal/desktop");

    enum class Outcome { granted, cancelled, failed };

    explicit PortalRequest(QDBusConnection bus, QObject* parent = nullptr);

    /// Asks; `arguments` come before the options, in which the request's own name is put. Called once.
    void send(const QString& interface, const QString& method, QVariantList arguments, QVariantMap options);

Q_SIGNALS:
    /// Once. `results` as the portal gives them.
    void answered(tulvane::PortalRequest::Outcome outcome, const QVariantMap& results);

private Q_SLOTS:
    void respond(uint response, const QVariantMap& results);

private:
    void listenAt(const QString& requestPath);

    QDBusConnection m_bus;
    QString m_path;
    bool m_isAnswered = false;
};

} // namespace tulvane
