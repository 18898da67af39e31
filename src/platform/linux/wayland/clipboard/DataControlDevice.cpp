#include <platform/linux/wayland/clipboard/DataControlDevice.h>

#include <algorithm>

namespace tulvane {

DataControlDevice::DataControlDevice(wl_seat* seat, DataControlProtocol::Manager manager, Handlers handlers)
    : m_handlers(std::move(handlers)),
      m_object(zwlr_data_control_manager_v1_get_data_device(manager.object, seat))
{
    static const zwlr_data_control_device_v1_listener events{
        [](void* data, zwlr_data_control_device_v1*, zwlr_data_control_offer_v1* offer) {
            static_cast<DataControlDevice*>(data)->m_announced.push_back(
                std::make_shared<DataControlOffer>(offer));
        },
        [](void* data, zwlr_data_control_device_v1*, zwlr_data_control_offer_v1* offer) {
            static_cast<DataControlDevice*>(data)->tell(PasteSelection::clipboard, offer);
        },
        [](void* data, zwlr_data_control_device_v1*) {
            const auto finished = static_cast<DataControlDevice*>(data)->m_handlers.finished;
            finished();
        },
        [](void* data, zwlr_data_control_device_v1*, zwlr_data_control_offer_v1* offer) {
            static_cast<DataControlDevice*>(data)->tell(PasteSelection::primary, offer);
        }};
    zwlr_data_control_device_v1_add_listener(m_object, &events, this);
}

DataControlDevice::~DataControlDevice()
{
    zwlr_data_control_device_v1_destroy(m_object);
}

void DataControlDevice::take(PasteSelection which, zwlr_data_control_source_v1* source)
{
    if (which == PasteSelection::primary)
        zwlr_data_control_device_v1_set_primary_selection(m_object, source);
    else
        zwlr_data_control_device_v1_set_selection(m_object, source);
}

void DataControlDevice::tell(PasteSelection which, const zwlr_data_control_offer_v1* object)
{
    // Both selections' may have been announced before either is named.
    std::shared_ptr<DataControlOffer> offer;
    const auto found = std::ranges::find(m_announced, object, &DataControlOffer::object);
    if (found != m_announced.end()) {
        offer = std::move(*found);
        m_announced.erase(found);
    }
    m_handlers.ownerChanged(which, std::move(offer));
}

} // namespace tulvane
