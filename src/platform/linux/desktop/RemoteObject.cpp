#include <platform/linux/desktop/RemoteObject.h>

#include <QJsonDocument>

namespace tulvane {

QString RemoteObject::answer(RemoteRequest request, const QString& argument) const
{
    return QString::fromUtf8(QJsonDocument(m_answer(request, argument)).toJson(QJsonDocument::Compact));
}

} // namespace tulvane
