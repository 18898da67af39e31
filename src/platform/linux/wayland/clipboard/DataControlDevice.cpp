#include <platform/linux/wayland/clipboard/DataControlDevice.h>

namespace tulvane {

DataControlDevice::DataControlDevice(WaylandConnection& connection, DataControlProtocol::Manager manager,
                                     OwnerChanged ownerChanged)
    : m_ownerChanged(std::move(ownerChanged)),
      m_object(zwlr_data_control_manager_v1_get_data_device(manager.object, connection.seat()))
{
    static const zwlr_data_control_device_v1_listener events{
        [](void* data, zwlr_data_control_device_v1*, zwlr_data_control_offer_v1* offer) {
            static_cast<DataControlDevice*>(data)->m_announced = std::make_shared<DataControlOffer>(offer);
        },
        [](void* data, zwlr_data_control_device_v1*, zwlr_data_control_offer_v1* offer) {
            static_cast<DataControlDevice*>(data)->tell(PasteSelection::clipboard, offer);
        },
        [](void* /*data*/, zwlr_data_control_device_v1*) {},
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
    std::shared_ptr<DataControlOffer> offer;
    if (m_announced && m_announced->object() == object)
        offer = std::move(m_announced);
    m_ownerChanged(which, std::move(offer));
}

} // namespace tulvane
