#include <platform/linux/caller/BusAddress.h>
#include <platform/linux/caller/BusCaller.h>
#include <platform/linux/process/KernelCards.h>
#include <platform/linux/process/PipedProcesses.h>
#include <platform/linux/process/ProcessMemory.h>
#include <platform/linux/process/ThreadConfinement.h>
#include <platform/linux/storage/JsonUserDefaults.h>
#include <ports/LocalServices.h>

namespace tulvane {

namespace {

class LinuxLocalServices final : public LocalServices {
public:
    explicit LinuxLocalServices(const Clock& clock) : m_clock(clock) {}

    [[nodiscard]] std::shared_ptr<UserDefaults> defaults() override
    {
        if (!m_defaults)
            m_defaults = std::make_shared<JsonUserDefaults>(JsonUserDefaults::standardFolder(),
                                                            QStringLiteral("com.dunio.Tulvane"), m_clock);
        return m_defaults;
    }
    [[nodiscard]] const SystemMemory& memory() override { return m_memory; }
    [[nodiscard]] std::shared_ptr<const HelperProcesses> helpers() override
    {
        return std::make_shared<PipedProcesses>();
    }
    [[nodiscard]] std::shared_ptr<const GraphicsCards> cards() override
    {
        return std::make_shared<KernelCards>();
    }
    [[nodiscard]] ConfineThread confinement() override { return confineThread; }
    [[nodiscard]] std::unique_ptr<RemoteControl> caller() override
    {
        return BusCaller::open(sessionBusSockets());
    }

private:
    const Clock& m_clock;
    std::shared_ptr<JsonUserDefaults> m_defaults;
    ProcessMemory m_memory;
};

} // namespace

std::unique_ptr<LocalServices> openLocalServices(const Clock& clock)
{
    return std::make_unique<LinuxLocalServices>(clock);
}

} // namespace tulvane
