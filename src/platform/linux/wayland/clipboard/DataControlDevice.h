#pragma once

#include <platform/linux/wayland/clipboard/DataControlOffer.h>
#include <platform/linux/wayland/clipboard/DataControlProtocol.h>
#include <ports/PasteChord.h>

#include <functional>
#include <memory>
#include <vector>

namespace tulvane {

/// The selections of one seat, as the compositor reports them. Of the thread of its connection.
class DataControlDevice final {
public:
    struct Handlers {
        /// A selection has this owner now; null for none.
        std::function<void(PasteSelection which, std::shared_ptr<DataControlOffer> offer)> ownerChanged;
        /// The seat has gone, and the device is of no use any more. It may be destroyed within the call.
        std::function<void()> finished;
    };

    DataControlDevice(wl_seat* seat, DataControlProtocol::Manager manager, Handlers handlers);
    DataControlDevice(const DataControlDevice&) = delete;
    DataControlDevice& operator=(const DataControlDevice&) = delete;
    ~DataControlDevice();

    /// Makes the source, or nothing, the selection's owner.
    void take(PasteSelection which, zwlr_data_control_source_v1* source);

private:
    void tell(PasteSelection which, const zwlr_data_control_offer_v1* object);

    Handlers m_handlers;
    zwlr_data_control_device_v1* m_object;
    /// Announced, and not yet said of which selection it is.
    std::vector<std::shared_ptr<DataControlOffer>> m_announced;
};

} // namespace tulvane
