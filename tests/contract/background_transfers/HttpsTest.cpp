#include <platform/linux/transfers/http/HttpCall.h>
#include <support/HubServer.h>

#include <gtest/gtest.h>

namespace tulvane::transfers {

namespace {

using namespace std::chrono_literals;
using test::HubServer;
using Kind = HttpCallEnd::Kind;

const QByteArray body(100'000, 'm');

/// An encrypted hub, and a plain one beside it.
class HttpsTest : public testing::Test {
protected:
    HttpsTest() { qputenv("no_proxy", "127.0.0.1"); }
    ~HttpsTest() override
    {
        if (m_noProxy.isNull())
            qunsetenv("no_proxy");
        else
            qputenv("no_proxy", m_noProxy);
    }

    HttpCallEnd fetch(const QUrl& url, const QByteArray& trusted)
    {
        m_received.clear();
        HttpCall call{.url = url,
                      .headers = {},
                      .stallTimeout = 20s,
                      .deadline = std::chrono::steady_clock::now() + 20s,
                      .trusted = trusted,
                      .receive = [this](const ResponseHead&, std::span<const std::byte> bytes) {
                          m_received.append(reinterpret_cast<const char*>(bytes.data()),
                                            static_cast<qsizetype>(bytes.size()));
                          return true;
                      }};
        return perform(call, std::stop_token());
    }
    HttpCallEnd fetch(const QUrl& url) { return fetch(url, m_secure.certificate().toLocal8Bit()); }
    static void lead(HubServer& server, const QUrl& destination)
    {
        server.script(QStringLiteral("model"), {{{QStringLiteral("location"), destination.toString()}}});
    }

    const QByteArray m_noProxy = qgetenv("no_proxy");
    HubServer m_secure{HubServer::Scheme::https};
    HubServer m_plain;
    QByteArray m_received;
};

} // namespace

TEST_F(HttpsTest, AServerThatIsTrustedIsFetchedFrom)
{
    EXPECT_EQ(fetch(m_secure.put(QStringLiteral("model"), body)).kind, Kind::complete);
    EXPECT_EQ(m_received, body);
}

TEST_F(HttpsTest, AServerThatNobodyVouchesForIsRefused)
{
    const HttpCallEnd end = fetch(m_secure.put(QStringLiteral("model"), body), {});
    EXPECT_EQ(end.kind, Kind::failed);
    EXPECT_EQ(end.error, TransferError(TransferError::Kind::insecure));
    EXPECT_TRUE(m_received.isEmpty());
    EXPECT_TRUE(m_secure.requests().isEmpty());
}

TEST_F(HttpsTest, ARedirectToAPlainAddressIsRefusedAndNeverFollowed)
{
    const QUrl plain = m_plain.put(QStringLiteral("model"), body);
    lead(m_secure, plain);
    const HttpCallEnd end = fetch(m_secure.url(QStringLiteral("model")));
    EXPECT_EQ(end.kind, Kind::failed);
    EXPECT_EQ(end.error, TransferError(TransferError::Kind::insecure));
    EXPECT_TRUE(m_received.isEmpty());
    EXPECT_EQ(m_secure.requests().size(), 1);
    EXPECT_TRUE(m_plain.requests().isEmpty());
}

TEST_F(HttpsTest, ARedirectToAFileOrToAnotherKindOfServerIsNoResponse)
{
    for (const auto* const elsewhere :
         {"file:///etc/passwd", "ftp://127.0.0.1/model", "gopher://127.0.0.1/model"}) {
        lead(m_secure, QUrl(QString::fromLatin1(elsewhere)));
        const HttpCallEnd end = fetch(m_secure.url(QStringLiteral("model")));
        EXPECT_EQ(end.kind, Kind::failed) << elsewhere;
        EXPECT_EQ(end.error, TransferError(TransferError::Kind::badAnswer)) << elsewhere;
        EXPECT_TRUE(m_received.isEmpty()) << elsewhere;
    }
}

TEST_F(HttpsTest, HeadersWithoutAnEndAreNoResponse)
{
    m_secure.script(QStringLiteral("model"), {{{QStringLiteral("headers"), true}}});
    const auto start = std::chrono::steady_clock::now();
    const HttpCallEnd end = fetch(m_secure.put(QStringLiteral("model"), body));
    EXPECT_EQ(end.kind, Kind::failed);
    EXPECT_EQ(end.error, TransferError(TransferError::Kind::badAnswer));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
}

TEST_F(HttpsTest, ARedirectToAnEncryptedAddressIsFollowed)
{
    const QUrl elsewhere = m_secure.put(QStringLiteral("elsewhere"), body);
    for (HubServer* const from : {&m_secure, &m_plain}) {
        lead(*from, elsewhere);
        const HttpCallEnd end = fetch(from->url(QStringLiteral("model")));
        EXPECT_EQ(end.kind, Kind::complete);
        EXPECT_TRUE(end.redirected);
        EXPECT_EQ(m_received, body);
    }
}

} // namespace tulvane::transfers
