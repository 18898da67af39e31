#include "Fuzzer.h"

#include <platform/linux/transfers/TransferRecord.h>

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace tulvane;
    const auto record = transfers::TransferRecord::fromJson(test::bytesOf(data, size));
    if (!record)
        return 0;
    const auto again = transfers::TransferRecord::fromJson(record->toJson());
    test::promise(again.has_value(), "what we write we can read");
    test::promise(again->key() == record->key(), "a record keeps its key");
    test::promise(again->toJson() == record->toJson(), "reading and writing changes nothing");
    return 0;
}
