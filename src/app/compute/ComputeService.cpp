#include <app/compute/ComputeService.h>
#include <speech/whisper/BackendLoader.h>

#include <QHash>
#include <QLibrary>

#include <utility>

namespace tulvane {

namespace {

constexpr qint64 signOfLifeMs = 200;

DeviceKind kindOf(int vulkanType)
{
    switch (vulkanType) {
    case 1:
        return DeviceKind::integrated;
    case 2:
        return DeviceKind::discrete;
    case 3:
        return DeviceKind::shared;
    case 4:
        return DeviceKind::software;
    default:
        return DeviceKind::other;
    }
}

void take(void* context, quint32 index, const char* name, int type, const char* driver, quint64 totalBytes,
          quint64 freeBytes)
{
    static_cast<ComputingDevices*>(context)->append({.index = index,
                                                     .name = QString::fromUtf8(name).simplified(),
                                                     .kind = kindOf(type),
                                                     .driver = QString::fromUtf8(driver).simplified(),
                                                     .totalBytes = static_cast<qint64>(totalBytes),
                                                     .freeBytes = static_cast<qint64>(freeBytes)});
}

} // namespace

ComputeService::ComputeService(QString library, QString backends, const SystemMemory& memory,
                               std::function<void(const helper::Answer&)> say)
    : m_library(std::move(library)),
      m_say(std::move(say)),
      m_core(std::move(backends), memory, m_closing)
{
    m_core.setProgress([this] { showLife(); });
    m_sinceSignOfLife.start();
}

void ComputeService::showLife()
{
    if (m_sinceSignOfLife.elapsed() < signOfLifeMs)
        return;
    m_sinceSignOfLife.start();
    m_say(helper::Working());
}

void ComputeService::answer(const helper::Request& request)
{
    if (std::holds_alternative<helper::ListDevices>(request)) {
        m_say(listDevices());
    } else if (const auto* const model = std::get_if<helper::Load>(&request)) {
        m_say(load(*model));
    } else if (const auto* const speech = std::get_if<helper::Transcribe>(&request)) {
        m_say(transcribe(*speech));
    } else {
        m_core.unload();
        m_say(helper::Done());
    }
}

helper::Answer ComputeService::listDevices() const
{
    using List = int (*)(decltype(&take), void*);
    QLibrary library(m_library);
    const auto list = reinterpret_cast<List>(library.resolve("tulvane_list_devices"));
    ComputingDevices devices;
    if (list == nullptr)
        m_say(helper::LogLine{.isError = true, .text = library.errorString()});
    else if (const int result = list(take, &devices); result != 0)
        m_say(helper::LogLine{.isError = false,
                              .text = QStringLiteral("The Vulkan loader answers %1").arg(result)});
    QHash<QString, int> seen;
    for (ComputingDevice& device : devices) {
        if (const int number = ++seen[device.name]; number > 1)
            device.name += QStringLiteral(" (%1)").arg(number);
    }
    return helper::Devices{devices};
}

/// Whether the next load can go where it is meant to go.
bool ComputeService::prepare(quint32 device)
{
    if (device == helper::processor)
        return true;
    m_core.expectDevice();
    return loadDeviceBackend(m_library, device);
}

helper::Answer ComputeService::load(const helper::Load& request)
{
    if (!m_hasDevice)
        m_hasDevice = prepare(request.device);
    if (!*m_hasDevice)
        return EngineError::modelLoadFailed(
            request.modelFile, {.kind = EngineObstacle::Kind::library,
                                .detail = QStringLiteral("the driver offers no device any more")});
    const auto loaded = m_core.load(request.modelFile);
    if (!loaded)
        return loaded.error();
    return helper::Done();
}

helper::Answer ComputeService::transcribe(const helper::Transcribe& request)
{
    auto recognised = m_core.transcribe(request.samples, request.options);
    if (!recognised)
        return recognised.error();
    return *std::move(recognised);
}

} // namespace tulvane
