#include <platform/linux/wayland/windows/OutputScales.h>

#include <algorithm>

namespace tulvane {

OutputScales::OutputScales(WaylandConnection& connection) : m_connection(connection)
{
    const std::vector<WaylandConnection::Global> globals = connection.globals();
    for (const WaylandConnection::Global& global : globals)
        add(global);
    connect(&connection, &WaylandConnection::appeared, this, &OutputScales::add);
    connect(&connection, &WaylandConnection::disappeared, this, &OutputScales::remove);
    connection.catchUp();
}

OutputScales::~OutputScales()
{
    for (const Output& output : m_outputs)
        wl_output_destroy(output.object);
}

void OutputScales::add(const WaylandConnection::Global& global)
{
    constexpr std::uint32_t versionWithScale = 2;
    if (global.interface != wl_output_interface.name || global.version < versionWithScale)
        return;
    static const wl_output_listener events{
        [](void*, wl_output*, std::int32_t, std::int32_t, std::int32_t, std::int32_t, std::int32_t,
           const char*, const char*, std::int32_t) {},
        [](void*, wl_output*, std::uint32_t, std::int32_t, std::int32_t, std::int32_t) {},
        [](void*, wl_output*) {},
        [](void* data, wl_output*, std::int32_t scale) { static_cast<Output*>(data)->scale = scale; },
        [](void*, wl_output*, const char*) {},
        [](void*, wl_output*, const char*) {}};
    auto* const object = m_connection.bind<wl_output>(global, wl_output_interface, versionWithScale);
    Output& output = m_outputs.emplace_back(Output{global.name, object});
    wl_output_add_listener(object, &events, &output);
    m_connection.flush();
}

void OutputScales::remove(std::uint32_t name)
{
    const auto output = std::ranges::find(m_outputs, name, &Output::name);
    if (output == m_outputs.end())
        return;
    wl_output_destroy(output->object);
    m_outputs.erase(output);
}

int OutputScales::highest() const
{
    int highest = 1;
    for (const Output& output : m_outputs)
        highest = std::max(highest, output.scale);
    return highest;
}

} // namespace tulvane
