#include <platform/linux/desktop/RemoteObject.h>

#include <QJsonDocument>

namespace tulvane {

QString RemoteObject::methodOf(RemoteRequest request)
{
    switch (request) {
    case RemoteRequest::start:
        return QStringLiteral("Start");
    case RemoteRequest::stop:
        return QStringLiteral("Stop");
    case RemoteRequest::toggle:
        return QStringLiteral("Toggle");
    case RemoteRequest::cancel:
        return QStringLiteral("Cancel");
    case RemoteRequest::status:
        return QStringLiteral("Status");
    case RemoteRequest::doctor:
        return QStringLiteral("Doctor");
    case RemoteRequest::activate:
        return QStringLiteral("Activate");
    case RemoteRequest::quit:
        return QStringLiteral("Quit");
    case RemoteRequest::settings:
        return QStringLiteral("Settings");
    }
    Q_UNREACHABLE();
}

QString RemoteObject::answer(RemoteRequest request, const QString& argument) const
{
    return QString::fromUtf8(QJsonDocument(m_answer(request, argument)).toJson(QJsonDocument::Compact));
}

} // namespace tulvane
