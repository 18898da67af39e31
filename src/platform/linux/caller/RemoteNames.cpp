#include <platform/linux/caller/RemoteNames.h>

namespace tulvane {

QLatin1StringView remoteNames::methodOf(RemoteRequest request)
{
    switch (request) {
    case RemoteRequest::start:
        return QLatin1StringView("Start");
    case RemoteRequest::stop:
        return QLatin1StringView("Stop");
    case RemoteRequest::toggle:
        return QLatin1StringView("Toggle");
    case RemoteRequest::cancel:
        return QLatin1StringView("Cancel");
    case RemoteRequest::status:
        return QLatin1StringView("Status");
    case RemoteRequest::doctor:
        return QLatin1StringView("Doctor");
    case RemoteRequest::activate:
        return QLatin1StringView("Activate");
    case RemoteRequest::quit:
        return QLatin1StringView("Quit");
    case RemoteRequest::settings:
        return QLatin1StringView("Settings");
    }
    Q_UNREACHABLE();
}

} // namespace tulvane
