#include "Fuzzer.h"

#include <stats/StatsFile.h>

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace tulvane;
    const auto days = decodeStatistics(test::bytesOf(data, size));
    if (!days)
        return 0;
    const auto encoded = encodeStatistics(*days);
    if (!encoded)
        return 0;
    const auto again = decodeStatistics(*encoded);
    test::promise(again.has_value() && again->size() == days->size(), "what we write we can read");
    test::promise(encodeStatistics(*again) == encoded, "reading and writing changes nothing");
    return 0;
}
