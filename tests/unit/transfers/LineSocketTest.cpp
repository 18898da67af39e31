#include <platform/linux/transfers/LineSocket.h>
#include <support/Await.h>
#include <support/ScratchFolder.h>

#include <QList>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

namespace tulvane::transfers {
namespace {

using test::waitUntil;

class Pair : public ::testing::Test {
protected:
    Pair()
    {
        int ends[2] = {-1, -1};
        EXPECT_EQ(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, ends), 0);
        m_raw = ends[1];
        m_socket = std::make_unique<LineSocket>(ends[0]);
        QObject::connect(m_socket.get(), &LineSocket::received, m_socket.get(),
                         [this](const QJsonObject& message) { m_received.append(message); });
        QObject::connect(m_socket.get(), &LineSocket::closed, m_socket.get(), [this] { ++m_closed; });
    }
    ~Pair() override { ::close(m_raw); }
    void write(const QByteArray& text) const
    {
        EXPECT_EQ(::write(m_raw, text.constData(), static_cast<std::size_t>(text.size())), text.size());
    }
    [[nodiscard]] bool waitForClose() const
    {
        return waitUntil([this] { return m_closed > 0; });
    }

    int m_raw = -1;
    std::unique_ptr<LineSocket> m_socket;
    QList<QJsonObject> m_received;
    int m_closed = 0;
};

TEST_F(Pair, LinesComeApartAsTheyWereSent)
{
    write("{\"a\":1}\n{\"a\":");
    ASSERT_TRUE(waitUntil([this] { return m_received.size() == 1; }));
    write("2}\n");
    ASSERT_TRUE(waitUntil([this] { return m_received.size() == 2; }));
    EXPECT_EQ(m_received.at(1).value(u"a").toInt(), 2);
}

TEST_F(Pair, NonsenseEndsTheConversation)
{
    for (const char* const text : {"hello\n"}) {
        write(text);
        EXPECT_TRUE(waitForClose());
    }
    EXPECT_TRUE(m_received.isEmpty());
    EXPECT_FALSE(m_socket->isOpen());
}

TEST_F(Pair, AnEndlessLineEndsTheConversation)
{
    const QByteArray piece(60'000, 'x');
    for (int i = 0; i < 40 && m_closed == 0; ++i) {
        const auto written =
            ::send(m_raw, piece.constData(), static_cast<std::size_t>(piece.size()), MSG_NOSIGNAL);
        if (written < 0 && errno != EAGAIN)
            break;
        QCoreApplication::processEvents();
    }
    EXPECT_TRUE(waitForClose());
}

TEST_F(Pair, TheOtherEndsEndIsTold)
{
    ::shutdown(m_raw, SHUT_RDWR);
    EXPECT_TRUE(waitForClose());
    EXPECT_EQ(m_closed, 1);
    m_socket->send({});
}

TEST_F(Pair, WhatDoesNotFitAtOnceIsSentLater)
{
    const QString text(500'000, u'y');
    m_socket->send({{QStringLiteral("text"), text}});
    QByteArray got;
    ASSERT_TRUE(waitUntil([&] {
        char buffer[65536];
        const auto count = ::read(m_raw, buffer, sizeof(buffer));
        if (count > 0)
            got.append(buffer, count);
        return got.endsWith('\n');
    }));
    EXPECT_GT(got.size(), text.size());
}

TEST_F(Pair, AnEndThatNeverReadsIsGivenUp)
{
    const QString text(500'000, u'y');
    for (int i = 0; i < 20; ++i)
        m_socket->send({{QStringLiteral("text"), text}});
    EXPECT_TRUE(waitForClose());
}

TEST_F(Pair, MayBeDeletedByWhoIsTold)
{
    QObject::connect(m_socket.get(), &LineSocket::received, m_socket.get(), [this] { m_socket.reset(); });
    write("{}\n{}\n{}\n");
    ASSERT_TRUE(waitUntil([this] { return m_socket == nullptr; }));
    EXPECT_EQ(m_received.size(), 1);
}

TEST(LineSocketConnection, NobodyListeningIsNull)
{
    const test::ScratchFolder folder;
    EXPECT_EQ(LineSocket::connectTo(folder.file(QStringLiteral("absent"))), nullptr);
    EXPECT_EQ(LineSocket::connectTo(QString()), nullptr);
    EXPECT_EQ(LineSocket::connectTo(QString(200, u'x')), nullptr);
}

} // namespace
} // namespace tulvane::transfers
