#pragma once

#include <platform/linux/wayland/clipboard/DataControlOffer.h>
#include <platform/linux/wayland/clipboard/DataControlProtocol.h>
#include <ports/PasteChord.h>

#include <functional>
#include <memory>

namespace tulvane {

/// The selections of one seat, as the compositor reports them. Of the thread of its connection.
class DataControlDevice final {
public:
    /// A selection has this owner now; null for none.
    using OwnerChanged = std::function<void(PasteSelection which, std::shared_ptr<DataControlOffer> offer)>;

    /// `connection` outlives it.
    DataControlDevice(WaylandConnection& connection, DataControlProtocol::Manager manager,
                      OwnerChanged ownerChanged);
    DataControlDevice(const DataControlDevice&) = delete;
    DataControlDevice& operator=(const DataControlDevice&) = delete;
    ~DataControlDevice();

    /// Makes the source, or nothing, the selection's owner.
    void take(PasteSelection which, zwlr_data_control_source_v1* source);

private:
    void tell(PasteSelection which, const zwlr_data_control_offer_v1* object);

    OwnerChanged m_ownerChanged;
    zwlr_data_control_device_v1* m_object;
    /// Announced, and not yet said of which selection it is.
    std::shared_ptr<DataControlOffer> m_announced;
};

} // namespace tulvane
