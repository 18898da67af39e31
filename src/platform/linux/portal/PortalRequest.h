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

    /// Of what a portal opens for a program, and what can end at any time.
    static inline const QString sessionInterface = QStringLiteral("org.freedesktop.portal.Session");

    enum class Outcome { granted, cancelled, failed };

    /// A name of this process's own for what a portal makes, never twice.
    [[nodiscard]] static QString freshToken();

    /// The path of the session that the answer to CreateSession names: a text, in spite of its meaning.
    [[nodiscard]] static QString sessionIn(const QVariantMap& results);

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
