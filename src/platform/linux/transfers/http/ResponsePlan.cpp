#include <platform/linux/transfers/http/ResponsePlan.h>

#include <limits>

namespace tulvane::transfers {

namespace {

constexpr int partialContent = 206;
constexpr int rangeNotSatisfiable = 416;

std::optional<qint64> number(const QByteArray& text)
{
    bool isNumber = false;
    const qint64 value = text.toLongLong(&isNumber);
    // toLongLong takes signs and blanks, which the header's grammar does not.
    if (!isNumber || text.isEmpty() || text.front() < '0' || text.front() > '9')
        return std::nullopt;
    return value;
}

bool isPage(const ResponseHead& head)
{
    return head.contentType.toLower().startsWith("text/html");
}

bool isEncoded(const ResponseHead& head)
{
    return !head.contentEncoding.isEmpty() && head.contentEncoding.toLower() != "identity";
}

/// Some servers honour a range and leave the condition unread, so the response's own validator counts.
bool isOtherFile(const ResponseHead& head, const Held& held)
{
    return !head.etag.isEmpty() && !held.etag.isEmpty() && head.etag != held.etag;
}

ResponsePlan planForPart(const ResponseHead& head, const Held& held)
{
    const auto range = ContentRange::parse(head.contentRange);
    const bool fits = range && range->first == held.asked && !isEncoded(head) && !isOtherFile(head, held) &&
                      (!range->total || held.size < 0 || *range->total == held.size);
    if (fits && range->total.value_or(held.size) > held.most())
        return {BodyUse::refuse};
    if (fits)
        return {BodyUse::append, range->total.value_or(held.size)};
    return {held.asked > 0 ? BodyUse::askFromStart : BodyUse::refuse};
}

ResponsePlan planForWhole(const ResponseHead& head, const Held& held)
{
    // A login page of a network, say, must not cost the bytes that are already there.
    const bool isShort = head.contentLength >= 0 && head.contentLength < held.least();
    if (held.bytes > 0 && (isPage(head) || isShort))
        return {BodyUse::putAside};
    if (isEncoded(head) || head.contentLength > held.most())
        return {BodyUse::refuse};
    const bool same = held.bytes > 0 && isStrong(head.etag) && head.etag == held.etag &&
                      (head.contentLength < 0 || held.size < 0 || head.contentLength == held.size);
    // Without a length, only the body tells whether it is short.
    if (!same && held.bytes > 0 && head.contentLength < 0 && held.least() > 0)
        return {BodyUse::holdBack};
    return {same ? BodyUse::rewrite : BodyUse::replace, head.contentLength};
}

ResponsePlan planForNoRange(const ResponseHead& head, const Held& held)
{
    if (held.asked == 0)
        return {BodyUse::putAside};
    const auto range = ContentRange::parse(head.contentRange);
    if (range && range->total == held.asked && held.size == held.asked && !isOtherFile(head, held))
        return {BodyUse::nothing, held.size};
    return {BodyUse::askFromStart};
}

} // namespace

qint64 Held::most() const
{
    // Twice the share by which a file may differ from the catalogue's figure.
    return hint > 0 ? hint + hint / 3 : std::numeric_limits<qint64>::max();
}

void ResponseHead::take(const QByteArray& line)
{
    if (line.startsWith("HTTP/")) {
        *this = ResponseHead{};
        status = line.mid(line.indexOf(' ') + 1).left(3).toInt();
        return;
    }
    const qsizetype colon = line.indexOf(':');
    if (colon < 0)
        return;
    const QByteArray name = line.left(colon).trimmed().toLower();
    const QByteArray value = line.mid(colon + 1).trimmed();
    if (name == "etag")
        etag = value;
    else if (name == "content-range")
        contentRange = value;
    else if (name == "content-type")
        contentType = value;
    else if (name == "content-encoding")
        contentEncoding = value;
    else if (name == "content-length")
        contentLength = number(value).value_or(-1);
}

std::optional<ContentRange> ContentRange::parse(const QByteArray& text)
{
    if (!text.toLower().startsWith("bytes "))
        return std::nullopt;
    const QByteArray rest = text.mid(6).trimmed();
    const qsizetype slash = rest.indexOf('/');
    if (slash < 0)
        return std::nullopt;
    ContentRange range;
    const QByteArray total = rest.mid(slash + 1);
    range.total = number(total);
    if (!range.total && total != "*")
        return std::nullopt;
    const QByteArray span = rest.left(slash);
    if (span == "*")
        return range;
    const qsizetype dash = span.indexOf('-');
    range.first = number(span.left(dash < 0 ? 0 : dash));
    range.last = number(span.mid(dash + 1));
    if (!range.first || !range.last || *range.last < *range.first ||
        (range.total && *range.last >= *range.total))
        return std::nullopt;
    return range;
}

bool isStrong(const QByteArray& etag)
{
    return etag.size() >= 2 && etag.startsWith('"') && etag.endsWith('"');
}

ResponsePlan planFor(const ResponseHead& head, const Held& held)
{
    if (head.status == partialContent)
        return planForPart(head, held);
    if (head.status == rangeNotSatisfiable)
        return planForNoRange(head, held);
    if (head.status >= 200 && head.status < 300)
        return planForWhole(head, held);
    return {BodyUse::putAside};
}

} // namespace tulvane::transfers
