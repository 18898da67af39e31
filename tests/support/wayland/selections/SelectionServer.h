#pragma once

#include <QByteArray>
#include <QList>

#include <wayland-server-core.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <list>
#include <memory>

namespace tulvane::test {

/// The selections of a compositor with one seat, as libwayland's server shows them under both of the
/// interfaces for programs without a window. It keeps to the protocol's letter: a client that does not is
/// disconnected. Of the thread that runs the display's event loop.
class SelectionServer final {
public:
    enum class Protocol : std::uint8_t { ext, wlr };
    enum class Which : std::uint8_t { clipboard, primary };

    /// `wlrVersion`: 1 has no primary selection.
    SelectionServer(wl_display* display, std::uint32_t wlrVersion);
    SelectionServer(const SelectionServer&) = delete;
    SelectionServer& operator=(const SelectionServer&) = delete;
    ~SelectionServer();

    [[nodiscard]] wl_global* global(Protocol protocol) const;
    /// A seat comes, or goes and takes its selections with it.
    void addSeat();
    void removeSeat();
    /// Announces both selections anew to every program, first what is offered, then of which selection it is.
    void announceBothAtOnce();

    /// How often a client of this process has bound a manager.
    [[nodiscard]] int bindings(Protocol protocol) const;
    /// The offers that a client of this process has been given and has not given back.
    [[nodiscard]] int offers() const;

private:
    struct Requests;
    struct Source {
        explicit Source(wl_resource* object) : resource(object) {}

        wl_resource* resource; ///< null once its client has destroyed it
        QList<QByteArray> types;
        bool isUsed = false;
    };
    struct Offer {
        SelectionServer* server;
        std::weak_ptr<Source> source;
        bool isOurs = false;
    };

    void bind(Protocol protocol, wl_client* client, std::uint32_t version, std::uint32_t id);
    void addDevice(wl_client* client, wl_resource* manager, std::uint32_t id);
    void select(wl_resource* device, wl_resource* source, Which which);
    void replace(Which which, std::shared_ptr<Source> source);
    /// The object by which the device is sent it; null for none.
    [[nodiscard]] wl_resource* offerTo(wl_resource* device, const std::shared_ptr<Source>& source);
    void announce(wl_resource* device, Which which, wl_resource* offer) const;
    [[nodiscard]] const std::shared_ptr<Source>& current(Which which) const
    {
        return m_current[static_cast<std::size_t>(which)];
    }

    wl_display* m_display;
    wl_global* m_ext;
    wl_global* m_wlr;
    wl_global* m_seat = nullptr;
    std::list<wl_resource*> m_devices; ///< of the seat that is there
    std::array<std::shared_ptr<Source>, 2> m_current;
    std::array<int, 2> m_bindings{};
    int m_offers = 0;
};

} // namespace tulvane::test
