#include <platform/linux/transfers/http/ResponsePlan.h>

#include <gtest/gtest.h>

namespace tulvane::transfers {
namespace {

const QByteArray etag = "\"abc\"";

ResponseHead head(int status, const QByteArray& range = {})
{
    ResponseHead answer;
    answer.status = status;
    answer.etag = etag;
    answer.contentRange = range;
    return answer;
}

Held nothing()
{
    return {};
}

Held hundredOfThousand()
{
    return {.asked = 100, .bytes = 100, .etag = etag, .size = 1000};
}

TEST(ResponseHead, TakesTheHeadersOfTheLastAnswer)
{
    ResponseHead answer;
    for (const char* const line :
         {"HTTP/1.1 302 Found", "ETag: \"redirect\"", "Content-Length: 0", "HTTP/2 206", "etag: \"file\"",
          "CONTENT-RANGE: bytes 1-2/3", "Content-Type:text/html; charset=utf-8", "content-encoding: gzip",
          "Content-Length: 2", "Nonsense", ""})
        answer.take(line);
    EXPECT_EQ(answer.status, 206);
    EXPECT_EQ(answer.etag, "\"file\"");
    EXPECT_EQ(answer.contentRange, "bytes 1-2/3");
    EXPECT_EQ(answer.contentType, "text/html; charset=utf-8");
    EXPECT_EQ(answer.contentEncoding, "gzip");
    EXPECT_EQ(answer.contentLength, 2);
}

TEST(ContentRange, Parses)
{
    const auto range = ContentRange::parse("bytes 5-9/10");
    ASSERT_TRUE(range);
    EXPECT_EQ(range->first, 5);
    EXPECT_EQ(range->last, 9);
    EXPECT_EQ(range->total, 10);
    EXPECT_EQ(ContentRange::parse("bytes */10")->total, 10);
    EXPECT_FALSE(ContentRange::parse("bytes */10")->first);
    EXPECT_FALSE(ContentRange::parse("bytes 5-9/*")->total);
}

TEST(ContentRange, NonsenseIsNone)
{
    for (const char* const text :
         {"", "bytes", "items 1-2/3", "bytes 1-2", "bytes 2-1/3", "bytes 1-3/3", "bytes -1-2/3",
          "bytes 1-x/3", "bytes 1-2/x", "bytes +1-2/3", "bytes 12/3", "bytes 1-99999999999999999999/3"})
        EXPECT_FALSE(ContentRange::parse(text)) << text;
}

TEST(StrongValidator, IsQuotedAndNotWeak)
{
    EXPECT_TRUE(isStrong("\"a\""));
    EXPECT_TRUE(isStrong("\"\""));
    EXPECT_FALSE(isStrong("W/\"a\""));
    EXPECT_FALSE(isStrong("a"));
    EXPECT_FALSE(isStrong("\""));
    EXPECT_FALSE(isStrong(""));
}

TEST(ResponsePlan, AWholeFileReplaces)
{
    ResponseHead whole = head(200);
    whole.contentLength = 1000;
    EXPECT_EQ(planFor(whole, nothing()).use, BodyUse::replace);
    EXPECT_EQ(planFor(whole, nothing()).size, 1000);
    whole.etag = "\"other\"";
    EXPECT_EQ(planFor(whole, hundredOfThousand()).use, BodyUse::replace);
    whole.etag.clear();
    EXPECT_EQ(planFor(whole, hundredOfThousand()).use, BodyUse::replace);
}

TEST(ResponsePlan, TheSameWholeFileKeepsTheBytesWhileItComes)
{
    ResponseHead whole = head(200);
    whole.contentLength = 1000;
    EXPECT_EQ(planFor(whole, hundredOfThousand()).use, BodyUse::rewrite);
    whole.contentLength = 999;
    EXPECT_EQ(planFor(whole, hundredOfThousand()).use, BodyUse::replace);
}

TEST(ResponsePlan, AFittingPartIsAppended)
{
    const ResponsePlan plan = planFor(head(206, "bytes 100-999/1000"), hundredOfThousand());
    EXPECT_EQ(plan.use, BodyUse::append);
    EXPECT_EQ(plan.size, 1000);
    EXPECT_EQ(planFor(head(206, "bytes 100-999/*"), hundredOfThousand()).size, 1000);
    Held unknownSize = hundredOfThousand();
    unknownSize.size = -1;
    EXPECT_EQ(planFor(head(206, "bytes 100-1999/2000"), unknownSize).size, 2000);
}

TEST(ResponsePlan, APartThatDoesNotFitIsAskedForFromTheStart)
{
    for (const char* const range :
         {"bytes 101-999/1000", "bytes 99-999/1000", "bytes 100-1000/1001", "", "junk"})
        EXPECT_EQ(planFor(head(206, range), hundredOfThousand()).use, BodyUse::askFromStart) << range;
}

TEST(ResponsePlan, APartOfAnotherFileIsNotAppended)
{
    ResponseHead part = head(206, "bytes 100-999/1000");
    part.etag = "\"other\"";
    EXPECT_EQ(planFor(part, hundredOfThousand()).use, BodyUse::askFromStart);
    part.etag.clear();
    EXPECT_EQ(planFor(part, hundredOfThousand()).use, BodyUse::append);
}

TEST(ResponsePlan, APartThatNobodyAskedForMustBeTheWhole)
{
    EXPECT_EQ(planFor(head(206, "bytes 0-999/1000"), nothing()).use, BodyUse::append);
    EXPECT_EQ(planFor(head(206, "bytes 5-999/1000"), nothing()).use, BodyUse::refuse);
}

TEST(ResponsePlan, CompressedBodiesAreRefused)
{
    ResponseHead whole = head(200);
    whole.contentEncoding = "gzip";
    EXPECT_EQ(planFor(whole, nothing()).use, BodyUse::refuse);
    whole.contentEncoding = "Identity";
    EXPECT_EQ(planFor(whole, nothing()).use, BodyUse::replace);
    ResponseHead part = head(206, "bytes 100-999/1000");
    part.contentEncoding = "br";
    EXPECT_EQ(planFor(part, hundredOfThousand()).use, BodyUse::askFromStart);
}

TEST(ResponsePlan, APageDoesNotCostTheBytesAtHand)
{
    ResponseHead page = head(200);
    page.contentType = "Text/HTML; charset=utf-8";
    EXPECT_EQ(planFor(page, hundredOfThousand()).use, BodyUse::putAside);
    EXPECT_EQ(planFor(page, nothing()).use, BodyUse::replace);
    Held distrusted = hundredOfThousand();
    distrusted.asked = 0;
    EXPECT_EQ(planFor(page, distrusted).use, BodyUse::putAside);
}

TEST(ResponsePlan, AShortResponseDoesNotCostTheBytesAtHand)
{
    Held held = hundredOfThousand();
    held.hint = 1000;
    ResponseHead message = head(200);
    message.etag = "\"other\"";
    for (const qint64 length : {0, 2, 499}) {
        message.contentLength = length;
        EXPECT_EQ(planFor(message, held).use, BodyUse::putAside) << length;
    }
    message.contentLength = 500;
    EXPECT_EQ(planFor(message, held).use, BodyUse::replace);
    message.contentLength = -1;
    EXPECT_EQ(planFor(message, held).use, BodyUse::holdBack);
    Held empty;
    empty.hint = 1000;
    EXPECT_EQ(planFor(message, empty).use, BodyUse::replace);
}

TEST(ResponsePlan, WhatIsFarLargerThanExpectedIsRefused)
{
    Held held = hundredOfThousand();
    held.hint = 1000;
    held.size = -1;
    ResponseHead whole = head(200);
    whole.contentLength = 1333;
    EXPECT_EQ(planFor(whole, held).use, BodyUse::rewrite);
    whole.contentLength = 1334;
    EXPECT_EQ(planFor(whole, held).use, BodyUse::refuse);
    EXPECT_EQ(planFor(head(206, "bytes 100-1332/1333"), held).use, BodyUse::append);
    EXPECT_EQ(planFor(head(206, "bytes 100-1333/1334"), held).use, BodyUse::refuse);
    held.hint = 0;
    EXPECT_EQ(planFor(whole, held).use, BodyUse::rewrite);
}

TEST(ResponsePlan, NoSuchRangeMeansCompleteOrOnceMore)
{
    Held complete = hundredOfThousand();
    complete.asked = complete.bytes = 1000;
    EXPECT_EQ(planFor(head(416, "bytes */1000"), complete).use, BodyUse::nothing);
    ResponseHead other = head(416, "bytes */1000");
    other.etag = "\"other\"";
    EXPECT_EQ(planFor(other, complete).use, BodyUse::askFromStart);
    EXPECT_EQ(planFor(head(416, "bytes */50"), hundredOfThousand()).use, BodyUse::askFromStart);
    EXPECT_EQ(planFor(head(416), complete).use, BodyUse::askFromStart);
    EXPECT_EQ(planFor(head(416), nothing()).use, BodyUse::putAside);
}

TEST(ResponsePlan, EveryOtherStatusIsPutAside)
{
    for (const int status : {301, 304, 400, 403, 404, 500, 503})
        EXPECT_EQ(planFor(head(status), hundredOfThousand()).use, BodyUse::putAside) << status;
}

} // namespace
} // namespace tulvane::transfers
