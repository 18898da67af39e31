#include <platform/linux/atspi/AtspiFocusedElements.h>
#include <platform/linux/desktop/DBusRemoteControl.h>
#include <platform/linux/desktop/LastingBus.h>
#include <platform/linux/desktop/PortalPermissions.h>
#include <platform/linux/pulse/PulseAudioInput.h>
#include <platform/linux/pulse/PulseServer.h>
#include <platform/linux/session/DisplayCheck.h>
#include <platform/linux/session/Session.h>
#include <platform/linux/transfers/DetachedTransfers.h>
#include <ports/ProgramServices.h>

#include <chrono>
#include <optional>

namespace tulvane {

namespace {

/// The store answers at once or is not there.
constexpr std::chrono::milliseconds portalLimit{250};

class LinuxServices final : public ProgramServices {
public:
    LinuxServices(ServiceOptions options, const Clock& clock)
        : m_options(std::move(options)),
          m_local(openLocalServices(clock))
    {
    }

    [[nodiscard]] std::shared_ptr<UserDefaults> defaults() override { return m_local->defaults(); }
    [[nodiscard]] const SystemMemory& memory() override { return m_local->memory(); }
    [[nodiscard]] std::shared_ptr<const HelperProcesses> helpers() override { return m_local->helpers(); }
    [[nodiscard]] std::shared_ptr<const GraphicsCards> cards() override { return m_local->cards(); }
    [[nodiscard]] ConfineThread confinement() override { return m_local->confinement(); }
    [[nodiscard]] std::unique_ptr<RemoteControl> caller() override { return m_local->caller(); }
    [[nodiscard]] RemoteControl& remote() override { return made(m_remote); }
    [[nodiscard]] AudioInput& microphone() override { return made(m_microphone); }
    [[nodiscard]] QString soundServer() override { return made(m_microphone).server()->serverName(); }
    [[nodiscard]] BackgroundTransfers& transfers() override
    {
        return made(m_transfers, DetachedTransfers::Options{.helper = m_options.transferHelper,
                                                            .folder = m_options.transferFolder});
    }
    [[nodiscard]] const PrivacyPermissions& permissions() override
    {
        if (m_permissions)
            return *m_permissions;
        auto decided = std::make_unique<MicrophonePermission>(LastingBus::session(),
                                                              QStringLiteral("com.dunio.Tulvane"));
        decided->waitForAnswer(portalLimit);
        m_permissions = std::make_unique<PortalPermissions>(
            sessionOf(m_options.environment)
                .permissions(m_options.environment,
                             [this] { return made(m_microphone).server()->refusesMicrophone(); }),
            std::move(decided));
        return *m_permissions;
    }
    [[nodiscard]] SessionFacts session() override
    {
        const Session& session = sessionOf(m_options.environment);
        const bool isWayland = hasWaylandWindows(session);
        const QByteArray display = displayName(m_options.environment);
        return {.kind = session.name,
                .desktop = desktopName(m_options.environment),
                .display = isWayland ? m_options.environment.value(QStringLiteral("WAYLAND_DISPLAY"))
                                     : QString::fromLocal8Bit(display),
                .displayReached = isWayland || !displayObstacle(display),
                .hasAccessibilityBus =
                    AtspiFocusedElements::isOffered(AtspiFocusedElements::usersSessionBus())};
    }

private:
    template <class Service, class... Arguments>
    [[nodiscard]] static Service& made(std::optional<Service>& service, const Arguments&... arguments)
    {
        return service ? *service : service.emplace(arguments...);
    }

    ServiceOptions m_options;
    std::unique_ptr<LocalServices> m_local;
    std::optional<DBusRemoteControl> m_remote;
    std::optional<PulseAudioInput> m_microphone;
    std::optional<DetachedTransfers> m_transfers;
    std::unique_ptr<PrivacyPermissions> m_permissions;
};

} // namespace

std::unique_ptr<ProgramServices> openProgramServices(const ServiceOptions& options, const Clock& clock)
{
    return std::make_unique<LinuxServices>(options, clock);
}

} // namespace tulvane
