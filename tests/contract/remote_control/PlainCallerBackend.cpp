#include "RemoteControlBackend.h"

#include <platform/linux/caller/BusAddress.h>
#include <platform/linux/caller/BusCaller.h>
#include <platform/linux/desktop/DBusRemoteControl.h>
#include <support/VirtualDesktop.h>

#include <QThreadPool>

namespace tulvane::test {

namespace {

/// Is the running program in the usual way, and asks it without a library. It asks in a thread, since both
/// ends are in one process here.
class PlainlyAsking final : public RemoteControl {
public:
    explicit PlainlyAsking(const QString& bus) : m_bus(bus), m_program(bus) {}

    [[nodiscard]] Claim claim(Answer answer) override { return m_program.claim(std::move(answer)); }
    void announcePhase(const QString& phase) override { m_program.announcePhase(phase); }
    [[nodiscard]] QFuture<Result<QJsonObject, RemoteError>> ask(RemoteRequest request,
                                                                const QString& argument) override
    {
        using Answered = Result<QJsonObject, RemoteError>;
        const auto promise = std::make_shared<QPromise<Answered>>();
        promise->start();
        QThreadPool::globalInstance()->start([promise, request, argument, bus = m_bus] {
            const auto caller = BusCaller::open(busSockets(bus.toLocal8Bit()));
            if (caller)
                promise->addResult(caller->ask(request, argument).result());
            else
                promise->addResult(Answered(failure(RemoteError::noConnection)));
            promise->finish();
        });
        return promise->future();
    }

private:
    QString m_bus;
    DBusRemoteControl m_program;
};

class PlainCallerBackend final : public RemoteControlBackend {
public:
    std::unique_ptr<RemoteControl> process() override
    {
        return std::make_unique<PlainlyAsking>(
            m_desktop.environment().value(QStringLiteral("DBUS_SESSION_BUS_ADDRESS")));
    }
    std::unique_ptr<RemoteControl> lonelyProcess() override
    {
        return std::make_unique<PlainlyAsking>(QStringLiteral("unix:path=/nowhere/bus"));
    }

private:
    VirtualDesktop m_desktop{{.windowManager = VirtualDesktop::WindowManager::none,
                              .sessionBus = VirtualDesktop::SessionBus::own,
                              .openboxKeys = {}}};
};

} // namespace

INSTANTIATE_TEST_SUITE_P(PlainCaller, RemoteControlContract,
                         testing::Values(RemoteBackendFactory{
                             "PlainCaller", [] { return std::make_unique<PlainCallerBackend>(); }}));

} // namespace tulvane::test
