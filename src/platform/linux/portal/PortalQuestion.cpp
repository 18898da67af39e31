#include <platform/linux/portal/PortalQuestion.h>

#include <utility>

namespace tulvane {

PortalRequest& PortalQuestion::begin(const QDBusConnection& bus, Answered answered)
{
    end();
    m_request = new PortalRequest(bus, m_owner);
    QObject::connect(m_request, &PortalRequest::answered, m_request, std::move(answered));
    return *m_request;
}

void PortalQuestion::end()
{
    if (m_request == nullptr)
        return;
    // Its answer may be what calls this.
    PortalRequest* const ended = std::exchange(m_request, nullptr);
    // This signal alone: the bus follows the object by others.
    QObject::disconnect(ended, &PortalRequest::answered, nullptr, nullptr);
    ended->deleteLater();
}

} // namespace tulvane
