#include "Fuzzer.h"

#include <platform/linux/transfers/http/ResponsePlan.h>

#include <QByteArrayList>

// The first line says what was at hand, the others are the response's head.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace tulvane;
    using transfers::BodyUse;
    const QByteArrayList lines =
        QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)).split('\n');
    const QByteArrayList numbers = lines.first().split(' ');
    const auto number = [&](qsizetype index) {
        return std::abs(numbers.value(index).toLongLong() % 1'000'000'000'000);
    };
    transfers::Held held;
    held.asked = number(0);
    held.bytes = held.asked + number(1);
    held.hint = number(2);
    held.size = numbers.size() > 3 ? number(3) : -1;
    held.etag = held.asked > 0 ? QByteArray("\"tag\"") : QByteArray();
    transfers::ResponseHead head;
    for (const QByteArray& line : lines.mid(1))
        head.take(line.trimmed());
    const transfers::ResponsePlan plan = transfers::planFor(head, held);
    test::promise(plan.use != BodyUse::append || head.status == 206, "only a part is appended");
    test::promise(plan.use != BodyUse::askFromStart || held.asked > 0, "asking from the start is no loop");
    static_cast<void>(transfers::isStrong(head.etag));
    static_cast<void>(transfers::ContentRange::parse(lines.last()));
    return 0;
}
