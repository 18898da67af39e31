#include <platform/linux/wayland/connection/WaylandLibrary.h>

#include <dlfcn.h>

namespace tulvane {

namespace {

class Symbols final {
public:
    explicit Symbols(void* library) : m_library(library) {}

    template <class Function>
    void find(Function& function, const char* name)
    {
        function = m_library ? reinterpret_cast<Function>(dlsym(m_library, name)) : nullptr;
        m_areComplete = m_areComplete && function;
    }
    [[nodiscard]] bool areComplete() const { return m_areComplete; }

private:
    void* m_library;
    bool m_areComplete = true;
};

} // namespace

WaylandLibrary::WaylandLibrary()
{
    Symbols symbols(dlopen("libwayland-client.so.0", RTLD_NOW | RTLD_LOCAL));
    symbols.find(displayConnect, "wl_display_connect");
    symbols.find(displayDisconnect, "wl_display_disconnect");
    symbols.find(displayGetFd, "wl_display_get_fd");
    symbols.find(displayGetError, "wl_display_get_error");
    symbols.find(displayRoundtrip, "wl_display_roundtrip");
    symbols.find(displayFlush, "wl_display_flush");
    symbols.find(displayPrepareRead, "wl_display_prepare_read");
    symbols.find(displayReadEvents, "wl_display_read_events");
    symbols.find(displayDispatchPending, "wl_display_dispatch_pending");
    symbols.find(proxyMarshalFlags, "wl_proxy_marshal_flags");
    symbols.find(proxyAddListener, "wl_proxy_add_listener");
    symbols.find(proxyDestroy, "wl_proxy_destroy");
    symbols.find(proxyGetVersion, "wl_proxy_get_version");
    symbols.find(proxySetUserData, "wl_proxy_set_user_data");
    symbols.find(proxyGetUserData, "wl_proxy_get_user_data");
    m_isComplete = symbols.areComplete();
}

const WaylandLibrary& WaylandLibrary::opened()
{
    static const WaylandLibrary library;
    return library;
}

bool WaylandLibrary::isThere()
{
    return opened().m_isComplete;
}

const WaylandLibrary& WaylandLibrary::functions()
{
    return opened();
}

} // namespace tulvane
