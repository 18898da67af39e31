#pragma once

#include <platform/linux/portal/PortalRequest.h>

#include <QDBusConnection>

#include <functional>

namespace tulvane {

/// The one question to the portal whose answer is waited for. A new one takes the place of the last, whose
/// answer counts no more. Main thread.
class PortalQuestion final {
public:
    using Answered = std::function<void(PortalRequest::Outcome outcome, const QVariantMap& results)>;

    /// Of this object, with which it ends.
    explicit PortalQuestion(QObject* owner) : m_owner(owner) {}
    PortalQuestion(const PortalQuestion&) = delete;
    PortalQuestion& operator=(const PortalQuestion&) = delete;
    ~PortalQuestion() { end(); }

    /// To be sent; `answered` is called once, unless the question has ended before.
    [[nodiscard]] PortalRequest& begin(const QDBusConnection& bus, Answered answered);
    void end();

private:
    QObject* m_owner;
    PortalRequest* m_request = nullptr;
};

} // namespace tulvane
