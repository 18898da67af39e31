#pragma once

#include <platform/linux/transfers/http/ResponsePlan.h>
#include <ports/TransferError.h>

#include <QByteArrayList>
#include <QUrl>

#include <chrono>
#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <stop_token>

namespace tulvane::transfers {

/// One GET, redirects followed. Proxy variables (`https_proxy`, `no_proxy`, ...) are honoured.
struct HttpCall {
    QUrl url;
    QByteArrayList headers; ///< whole header lines
    std::chrono::milliseconds stallTimeout{};
    std::chrono::steady_clock::time_point deadline;
    /// A file of the certificates that are trusted in the place of the system's; of a test's own server,
    /// since the program never names one.
    QByteArray trusted;
    /// Gets each piece of the last response's body, with its head; false ends the call.
    std::function<bool(const ResponseHead&, std::span<const std::byte>)> receive;
};

/// How the call ended.
struct HttpCallEnd {
    enum class Kind {
        complete, ///< the whole response has come
        refused,  ///< the receiver wanted no more
        stopped,  ///< the stop token said so
        failed,   ///< see `error`
    };
    Kind kind = Kind::failed;
    ResponseHead head; ///< of the last response; status 0 when there was none
    bool redirected = false;
    std::optional<TransferError> error;
};

/// Makes the call and blocks until it ends; a stop ends it at once, in the middle of a name's lookup too. Any
/// thread.
[[nodiscard]] HttpCallEnd perform(const HttpCall& call, const std::stop_token& stop);

} // namespace tulvane::transfers
