#include <platform/linux/transfers/http/HttpCall.h>

#include <QElapsedTimer>

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <netdb.h>

#include <atomic>
#include <cstring>
#include <thread>

using namespace std::chrono_literals;

namespace {

std::atomic<int> lookups = 0;

} // namespace

/// The library's lookup of a name, in the place of the system's: one name takes long.
extern "C" __attribute__((visibility("default"))) int getaddrinfo(const char* node, const char* service,
                                                                  const addrinfo* hints, addrinfo** found)
{
    if (node != nullptr && std::strcmp(node, "slow.invalid") == 0) {
        ++lookups;
        std::this_thread::sleep_for(3s);
        return EAI_NONAME;
    }
    static const auto real = reinterpret_cast<int (*)(const char*, const char*, const addrinfo*, addrinfo**)>(
        ::dlsym(RTLD_NEXT, "getaddrinfo"));
    return real(node, service, hints, found);
}

namespace tulvane::transfers {
namespace {

TEST(SlowLookup, DoesNotHoldUpACancellation)
{
    HttpCall call;
    call.url = QUrl(QStringLiteral("http://slow.invalid/model.bin"));
    call.stallTimeout = 60s;
    call.deadline = std::chrono::steady_clock::now() + 60s;
    call.receive = [](const ResponseHead&, std::span<const std::byte>) { return true; };
    qint64 elapsed = 0;
    {
        QElapsedTimer sinceStop;
        std::jthread worker([&](const std::stop_token& stop) {
            EXPECT_EQ(perform(call, stop).kind, HttpCallEnd::Kind::stopped);
            elapsed = sinceStop.elapsed();
        });
        for (int i = 0; i < 5000 && lookups == 0; ++i)
            std::this_thread::sleep_for(1ms);
        EXPECT_EQ(lookups, 1);
        sinceStop.start();
        worker.request_stop();
    }
    EXPECT_LT(elapsed, 200);
    // The abandoned lookup ends before the process does.
    std::this_thread::sleep_for(3s);
}

} // namespace
} // namespace tulvane::transfers
