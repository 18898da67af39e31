#include "Backends.h"

#include <platform/fake/FakeBackgroundTransfers.h>
#include <platform/linux/transfers/DetachedTransfers.h>
#include <support/HubServer.h>
#include <support/ScratchFolder.h>
#include <support/transfers/InProcessTransfers.h>

namespace tulvane::test {

namespace {

class FakeBackend final : public TransfersBackend {
public:
    BackgroundTransfers& transfers() override { return m_transfers; }
    QUrl serve(const QByteArray& body, const QList<Behaviour>& first) override
    {
        const QUrl url(QStringLiteral("https://hub.example/%1").arg(++m_served));
        QList<FakeBackgroundTransfers::Answer> answers;
        for (const Behaviour& each : first)
            answers.append(
                {.status = each.status, .body = body, .cutAfter = each.cutAfter, .hold = each.hold});
        answers.append({.body = body});
        m_transfers.script(url, answers);
        return url;
    }

private:
    FakeBackgroundTransfers m_transfers;
    int m_served = 0;
};

QList<QJsonObject> faultsFor(const QList<Behaviour>& behaviours)
{
    QList<QJsonObject> faults;
    for (const Behaviour& each : behaviours) {
        QJsonObject fault;
        if (each.status != 200)
            fault.insert(QStringLiteral("status"), each.status);
        if (each.cutAfter >= 0)
            fault.insert(each.hold ? QStringLiteral("stall") : QStringLiteral("cut"), each.cutAfter);
        faults.append(fault);
    }
    return faults;
}

/// Over real HTTP.
class HttpBackend : public TransfersBackend {
public:
    QUrl serve(const QByteArray& body, const QList<Behaviour>& first) final
    {
        const QString path = QStringLiteral("file-%1").arg(++m_served);
        m_server.script(path, faultsFor(first));
        return m_server.put(path, body);
    }

protected:
    [[nodiscard]] QString folder() const { return m_scratch.file(QStringLiteral("Downloads")); }

private:
    HubServer m_server;
    ScratchFolder m_scratch;
    int m_served = 0;
};

class InProcessBackend final : public HttpBackend {
public:
    BackgroundTransfers& transfers() override { return m_transfers; }

private:
    InProcessTransfers m_transfers{folder()};
};

class DetachedBackend final : public HttpBackend {
public:
    BackgroundTransfers& transfers() override { return m_transfers; }

private:
    DetachedTransfers m_transfers{{.helper = QStringLiteral(TULVANE_TRANSFER_HELPER),
                                   .folder = folder(),
                                   .helperArguments = {QStringLiteral("--retries"), QStringLiteral("0"),
                                                       QStringLiteral("--linger"), QStringLiteral("200")}}};
};

} // namespace

std::unique_ptr<TransfersBackend> makeFakeBackend()
{
    return std::make_unique<FakeBackend>();
}

std::unique_ptr<TransfersBackend> makeInProcessBackend()
{
    return std::make_unique<InProcessBackend>();
}

std::unique_ptr<TransfersBackend> makeDetachedBackend()
{
    return std::make_unique<DetachedBackend>();
}

} // namespace tulvane::test
