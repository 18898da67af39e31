#include <platform/linux/transfers/http/HttpCall.h>

#include <curl/curl.h>

#include <memory>
#include <mutex>

namespace tulvane::transfers {

namespace {

using Clock = std::chrono::steady_clock;

constexpr long mostRedirects = 10;
constexpr long receiveBuffer = 512L * 1024;
constexpr int pollMilliseconds = 100;
// Of all responses of a call together; newer libraries stop at as much by themselves.
constexpr std::size_t mostHeaderBytes = 300UL * 1024;

struct FreeEasy {
    void operator()(CURL* handle) const { curl_easy_cleanup(handle); }
};
struct FreeMulti {
    void operator()(CURLM* handle) const { curl_multi_cleanup(handle); }
};
struct FreeList {
    void operator()(curl_slist* list) const { curl_slist_free_all(list); }
};
using Easy = std::unique_ptr<CURL, FreeEasy>;
using Multi = std::unique_ptr<CURLM, FreeMulti>;
using HeaderList = std::unique_ptr<curl_slist, FreeList>;

/// What the library's callbacks write to.
struct Progressing {
    const HttpCall& call;
    ResponseHead head{};
    Clock::time_point lastByte = Clock::now();
    std::size_t headerBytes = 0;
    bool refused = false;
};

std::size_t takeHeader(char* data, std::size_t size, std::size_t count, void* user)
{
    auto& state = *static_cast<Progressing*>(user);
    state.lastByte = Clock::now();
    state.headerBytes += size * count;
    if (state.headerBytes > mostHeaderBytes)
        return 0;
    state.head.take(QByteArray(data, static_cast<qsizetype>(size * count)).trimmed());
    return size * count;
}

std::size_t takeBody(char* data, std::size_t size, std::size_t count, void* user)
{
    auto& state = *static_cast<Progressing*>(user);
    state.lastByte = Clock::now();
    const std::span<const char> bytes(data, size * count);
    if (state.call.receive(state.head, std::as_bytes(bytes)))
        return size * count;
    state.refused = true;
    return 0;
}

HeaderList headerList(const QByteArrayList& lines)
{
    HeaderList list;
    for (const QByteArray& line : lines) {
        if (curl_slist* const longer = curl_slist_append(list.get(), line.constData())) {
            [[maybe_unused]] const auto* const same = list.release();
            list.reset(longer);
        }
    }
    return list;
}

void configure(CURL* easy, const HttpCall& call, Progressing& state, curl_slist* headers)
{
    const bool secure = call.url.scheme() == u"https";
    curl_easy_setopt(easy, CURLOPT_URL, call.url.toEncoded().constData());
    curl_easy_setopt(easy, CURLOPT_HTTPHEADER, headers);
    curl_easy_setopt(easy, CURLOPT_NOSIGNAL, 1L);
    // A name that is looked up slowly must not hold up a cancellation: the lookup ends by itself, unheeded.
    curl_easy_setopt(easy, CURLOPT_QUICK_EXIT, 1L);
    curl_easy_setopt(easy, CURLOPT_NOPROGRESS, 1L);
    curl_easy_setopt(easy, CURLOPT_SUPPRESS_CONNECT_HEADERS, 1L);
    curl_easy_setopt(easy, CURLOPT_BUFFERSIZE, receiveBuffer);
    curl_easy_setopt(easy, CURLOPT_FOLLOWLOCATION, 1L);
    curl_easy_setopt(easy, CURLOPT_MAXREDIRS, mostRedirects);
    // An encrypted address must not be led to a plain one, where any machine on the way could answer.
    curl_easy_setopt(easy, CURLOPT_PROTOCOLS_STR, "http,https");
    curl_easy_setopt(easy, CURLOPT_REDIR_PROTOCOLS_STR, secure ? "https" : "http,https");
    if (!call.trusted.isEmpty()) {
        curl_easy_setopt(easy, CURLOPT_CAINFO, call.trusted.constData());
        curl_easy_setopt(easy, CURLOPT_CAPATH, nullptr);
    }
    curl_easy_setopt(easy, CURLOPT_HEADERFUNCTION, &takeHeader);
    curl_easy_setopt(easy, CURLOPT_HEADERDATA, &state);
    curl_easy_setopt(easy, CURLOPT_WRITEFUNCTION, &takeBody);
    curl_easy_setopt(easy, CURLOPT_WRITEDATA, &state);
}

TransferError errorFor(CURLcode code)
{
    using Kind = TransferError::Kind;
    switch (code) {
    case CURLE_OPERATION_TIMEDOUT:
        return TransferError(Kind::timedOut);
    case CURLE_COULDNT_RESOLVE_HOST:
    case CURLE_COULDNT_RESOLVE_PROXY:
        return TransferError(Kind::hostNotFound);
    case CURLE_COULDNT_CONNECT:
        return TransferError(Kind::cannotConnect);
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_CACERT_BADFILE:
    case CURLE_SSL_CIPHER:
        return TransferError(Kind::insecure);
    case CURLE_TOO_MANY_REDIRECTS:
    case CURLE_WEIRD_SERVER_REPLY:
    case CURLE_BAD_CONTENT_ENCODING:
    case CURLE_URL_MALFORMAT:
    case CURLE_UNSUPPORTED_PROTOCOL:
        return TransferError(Kind::badAnswer);
    default:
        return TransferError(Kind::connectionLost);
    }
}

/// Why a redirect was not followed: one from an encrypted address to a plain one is not safe, and one to a
/// file or to another kind of server is no response.
TransferError errorFor(CURLcode code, CURL* easy)
{
    const char* target = nullptr;
    if (code == CURLE_UNSUPPORTED_PROTOCOL &&
        curl_easy_getinfo(easy, CURLINFO_EFFECTIVE_URL, &target) == CURLE_OK && target != nullptr &&
        QByteArray(target).toLower().startsWith("http:"))
        return TransferError(TransferError::Kind::insecure);
    return errorFor(code);
}

/// The library's verdict, once the transfer is over.
std::optional<CURLcode> verdict(CURLM* multi)
{
    int left = 0;
    while (const CURLMsg* const message = curl_multi_info_read(multi, &left)) {
        if (message->msg == CURLMSG_DONE)
            return message->data.result;
    }
    return std::nullopt;
}

HttpCallEnd ended(HttpCallEnd::Kind kind, std::optional<TransferError> error = std::nullopt)
{
    return {kind, {}, false, std::move(error)};
}

HttpCallEnd drive(CURLM* multi, CURL* easy, const Progressing& state, const std::stop_token& stop)
{
    const std::stop_callback wake(stop, [multi] { curl_multi_wakeup(multi); });
    for (;;) {
        int running = 0;
        curl_multi_perform(multi, &running);
        if (const auto code = verdict(multi)) {
            if (*code == CURLE_OK)
                return ended(HttpCallEnd::Kind::complete);
            if (state.refused)
                return ended(HttpCallEnd::Kind::refused);
            if (state.headerBytes > mostHeaderBytes)
                return ended(HttpCallEnd::Kind::failed, TransferError(TransferError::Kind::badAnswer));
            return ended(HttpCallEnd::Kind::failed, errorFor(*code, easy));
        }
        if (stop.stop_requested())
            return ended(HttpCallEnd::Kind::stopped);
        const auto now = Clock::now();
        if (now - state.lastByte > state.call.stallTimeout || now > state.call.deadline)
            return ended(HttpCallEnd::Kind::failed, TransferError(TransferError::Kind::timedOut));
        curl_multi_poll(multi, nullptr, 0, pollMilliseconds, nullptr);
    }
}

} // namespace

HttpCallEnd perform(const HttpCall& call, const std::stop_token& stop)
{
    static std::once_flag prepared;
    std::call_once(prepared, [] { curl_global_init(CURL_GLOBAL_DEFAULT); });

    const Easy easy(curl_easy_init());
    const Multi multi(curl_multi_init());
    if (!easy || !multi)
        return ended(HttpCallEnd::Kind::failed, TransferError(TransferError::Kind::unavailable));
    Progressing state{call};
    const HeaderList headers = headerList(call.headers);
    configure(easy.get(), call, state, headers.get());
    curl_multi_add_handle(multi.get(), easy.get());
    HttpCallEnd end = drive(multi.get(), easy.get(), state, stop);
    long redirects = 0;
    curl_easy_getinfo(easy.get(), CURLINFO_REDIRECT_COUNT, &redirects);
    curl_multi_remove_handle(multi.get(), easy.get());
    end.head = state.head;
    end.redirected = redirects > 0;
    return end;
}

} // namespace tulvane::transfers
