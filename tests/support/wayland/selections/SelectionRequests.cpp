#include <support/wayland/selections/SelectionRequests.h>

#include <unistd.h>

namespace tulvane::test {

bool SelectionServer::Requests::isOurs(wl_client* client)
{
    pid_t process = 0;
    wl_client_get_credentials(client, &process, nullptr, nullptr);
    return process == getpid();
}

void SelectionServer::Requests::destroy(wl_client*, wl_resource* resource)
{
    wl_resource_destroy(resource);
}

bool SelectionServer::Requests::isExt(wl_resource* resource)
{
    return QByteArray(wl_resource_get_class(resource)).startsWith("ext_");
}

void SelectionServer::Requests::refuse(wl_client*, wl_resource* seat, std::uint32_t)
{
    wl_resource_post_error(seat, WL_SEAT_ERROR_MISSING_CAPABILITY, "the seat has no devices");
}

const struct wl_seat_interface SelectionServer::Requests::seat{
    .get_pointer = refuse, .get_keyboard = refuse, .get_touch = refuse, .release = destroy};

const struct ext_data_control_manager_v1_interface SelectionServer::Requests::manager{
    .create_data_source =
        [](wl_client* client, wl_resource* resource, std::uint32_t id) {
            const wl_interface& interface = isExt(resource) ? ext_data_control_source_v1_interface
                                                            : zwlr_data_control_source_v1_interface;
            wl_resource* const source =
                wl_resource_create(client, &interface, wl_resource_get_version(resource), id);
            auto owned = std::make_unique<std::shared_ptr<Source>>(std::make_shared<Source>(source));
            wl_resource_set_implementation(source, &Requests::source, owned.release(), [](wl_resource* gone) {
                const std::unique_ptr<std::shared_ptr<Source>> last(&of<std::shared_ptr<Source>>(gone));
                (*last)->resource = nullptr;
            });
        },
    .get_data_device = [](wl_client* client, wl_resource* resource, std::uint32_t id,
                          wl_resource*) { of<SelectionServer>(resource).addDevice(client, resource, id); },
    .destroy = destroy};

const struct ext_data_control_device_v1_interface SelectionServer::Requests::device{
    .set_selection =
        [](wl_client*, wl_resource* resource, wl_resource* source) {
            of<SelectionServer>(resource).select(resource, source, Which::clipboard);
        },
    .destroy = destroy,
    .set_primary_selection =
        [](wl_client*, wl_resource* resource, wl_resource* source) {
            of<SelectionServer>(resource).select(resource, source, Which::primary);
        }};

const struct ext_data_control_source_v1_interface SelectionServer::Requests::source{
    .offer =
        [](wl_client*, wl_resource* resource, const char* type) {
            Source& source = *of<std::shared_ptr<Source>>(resource);
            if (source.isUsed)
                wl_resource_post_error(resource, EXT_DATA_CONTROL_SOURCE_V1_ERROR_INVALID_OFFER,
                                       "an offer after the source was used");
            source.types.append(type);
        },
    .destroy = destroy};

const struct ext_data_control_offer_v1_interface SelectionServer::Requests::offer{
    .receive =
        [](wl_client*, wl_resource* resource, const char* type, std::int32_t pipe) {
            const auto source = of<Offer>(resource).source.lock();
            if (source && source->resource)
                ext_data_control_source_v1_send_send(source->resource, type, pipe);
            close(pipe);
        },
    .destroy = destroy};

} // namespace tulvane::test
