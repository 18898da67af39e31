#include <support/wayland/selections/SelectionRequests.h>

#include <algorithm>
#include <utility>

namespace tulvane::test {

SelectionServer::SelectionServer(wl_display* display, std::uint32_t wlrVersion)
    : m_display(display),
      m_ext(wl_global_create(display, &ext_data_control_manager_v1_interface, 1, this,
                             [](wl_client* client, void* data, std::uint32_t version, std::uint32_t id) {
                                 static_cast<SelectionServer*>(data)->bind(Protocol::ext, client, version,
                                                                           id);
                             })),
      m_wlr(
          wl_global_create(display, &zwlr_data_control_manager_v1_interface, static_cast<int>(wlrVersion),
                           this, [](wl_client* client, void* data, std::uint32_t version, std::uint32_t id) {
                               static_cast<SelectionServer*>(data)->bind(Protocol::wlr, client, version, id);
                           }))
{
    addSeat();
}

SelectionServer::~SelectionServer() = default;

wl_global* SelectionServer::global(Protocol protocol) const
{
    return protocol == Protocol::ext ? m_ext : m_wlr;
}

void SelectionServer::addSeat()
{
    constexpr int version = 5;
    m_seat = wl_global_create(m_display, &wl_seat_interface, version, nullptr,
                              [](wl_client* client, void*, std::uint32_t bound, std::uint32_t id) {
                                  wl_resource* const seat = wl_resource_create(client, &wl_seat_interface,
                                                                               static_cast<int>(bound), id);
                                  wl_resource_set_implementation(seat, &Requests::seat, nullptr, nullptr);
                                  wl_seat_send_capabilities(seat, 0);
                                  if (bound >= WL_SEAT_NAME_SINCE_VERSION)
                                      wl_seat_send_name(seat, "seat0");
                              });
}

void SelectionServer::removeSeat()
{
    for (wl_resource* const device : std::exchange(m_devices, {}))
        ext_data_control_device_v1_send_finished(device);
    for (const Which which : {Which::clipboard, Which::primary})
        replace(which, nullptr);
    wl_global_destroy(std::exchange(m_seat, nullptr));
}

int SelectionServer::bindings(Protocol protocol) const
{
    return m_bindings[static_cast<std::size_t>(protocol)];
}

int SelectionServer::offers() const
{
    return m_offers;
}

void SelectionServer::bind(Protocol protocol, wl_client* client, std::uint32_t version, std::uint32_t id)
{
    if (Requests::isOurs(client))
        ++m_bindings[static_cast<std::size_t>(protocol)];
    const wl_interface& interface = protocol == Protocol::ext ? ext_data_control_manager_v1_interface
                                                              : zwlr_data_control_manager_v1_interface;
    wl_resource* const manager = wl_resource_create(client, &interface, static_cast<int>(version), id);
    wl_resource_set_implementation(manager, &Requests::manager, this, nullptr);
}

void SelectionServer::addDevice(wl_client* client, wl_resource* manager, std::uint32_t id)
{
    const wl_interface& interface = Requests::isExt(manager) ? ext_data_control_device_v1_interface
                                                             : zwlr_data_control_device_v1_interface;
    wl_resource* const device = wl_resource_create(client, &interface, wl_resource_get_version(manager), id);
    wl_resource_set_implementation(device, &Requests::device, this, [](wl_resource* gone) {
        Requests::of<SelectionServer>(gone).m_devices.remove(gone);
    });
    // The seat that it was asked for has gone: it has no use from the beginning.
    if (m_seat == nullptr) {
        ext_data_control_device_v1_send_finished(device);
        return;
    }
    m_devices.push_back(device);
    for (const Which which : {Which::clipboard, Which::primary})
        announce(device, which, offerTo(device, current(which)));
}

void SelectionServer::select(wl_resource* device, wl_resource* source, Which which)
{
    const auto chosen = source ? Requests::of<std::shared_ptr<Source>>(source) : nullptr;
    if (chosen && std::exchange(chosen->isUsed, true)) {
        wl_resource_post_error(device, EXT_DATA_CONTROL_DEVICE_V1_ERROR_USED_SOURCE,
                               "a source for a second time");
        return;
    }
    if (std::ranges::find(m_devices, device) != m_devices.end())
        replace(which, chosen);
}

void SelectionServer::replace(Which which, std::shared_ptr<Source> source)
{
    const auto before = std::exchange(m_current[static_cast<std::size_t>(which)], std::move(source));
    if (!before && !current(which))
        return;
    if (before && before->resource)
        ext_data_control_source_v1_send_cancelled(before->resource);
    for (wl_resource* const device : m_devices)
        announce(device, which, offerTo(device, current(which)));
}

wl_resource* SelectionServer::offerTo(wl_resource* device, const std::shared_ptr<Source>& source)
{
    if (!source || !source->resource)
        return nullptr;
    const wl_interface& interface =
        Requests::isExt(device) ? ext_data_control_offer_v1_interface : zwlr_data_control_offer_v1_interface;
    wl_client* const client = wl_resource_get_client(device);
    wl_resource* const offer = wl_resource_create(client, &interface, wl_resource_get_version(device), 0);
    auto about = std::make_unique<Offer>(Offer{this, source, Requests::isOurs(client)});
    m_offers += about->isOurs ? 1 : 0;
    wl_resource_set_implementation(offer, &Requests::offer, about.release(), [](wl_resource* gone) {
        const std::unique_ptr<Offer> last(&Requests::of<Offer>(gone));
        last->server->m_offers -= last->isOurs ? 1 : 0;
    });
    ext_data_control_device_v1_send_data_offer(device, offer);
    for (const QByteArray& type : source->types)
        ext_data_control_offer_v1_send_offer(offer, type.constData());
    return offer;
}

void SelectionServer::announce(wl_resource* device, Which which, wl_resource* offer) const
{
    if (which == Which::clipboard) {
        ext_data_control_device_v1_send_selection(device, offer);
        return;
    }
    if (Requests::isExt(device) || wl_resource_get_version(device) > 1)
        ext_data_control_device_v1_send_primary_selection(device, offer);
}

void SelectionServer::announceBothAtOnce()
{
    for (wl_resource* const device : m_devices) {
        wl_resource* const clipboard = offerTo(device, current(Which::clipboard));
        wl_resource* const primary = offerTo(device, current(Which::primary));
        announce(device, Which::clipboard, clipboard);
        announce(device, Which::primary, primary);
    }
}

} // namespace tulvane::test
