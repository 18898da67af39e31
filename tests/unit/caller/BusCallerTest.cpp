// A bus of the test's own that answers as it likes. What a real one answers, the contract's suite sees.
#include <platform/linux/caller/BusCaller.h>
#include <platform/linux/caller/BusMessages.h>
#include <support/ScratchFolder.h>

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstring>
#include <thread>

namespace tulvane::test {

namespace {

/// Takes one connection and says these things in turn, each after something has been received.
class ScriptedBus {
public:
    explicit ScriptedBus(QByteArrayList words) : m_words(std::move(words))
    {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::memcpy(address.sun_path, socket().constData(), static_cast<std::size_t>(socket().size()));
        m_listening = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
        if (bind(m_listening, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
            listen(m_listening, 1) != 0)
            ADD_FAILURE() << "no socket";
        m_thread = std::thread([this] { serve(); });
    }
    ScriptedBus(const ScriptedBus&) = delete;
    ScriptedBus& operator=(const ScriptedBus&) = delete;
    ~ScriptedBus()
    {
        shutdown(m_listening, SHUT_RDWR);
        m_thread.join();
        close(m_listening);
    }
    [[nodiscard]] QByteArray socket() const
    {
        return QFile::encodeName(m_folder.path() + QStringLiteral("/bus"));
    }

private:
    void serve()
    {
        const int peer = accept(m_listening, nullptr, nullptr);
        char bytes[4096];
        for (const QByteArray& word : m_words) {
            if (recv(peer, bytes, sizeof bytes, 0) <= 0)
                break;
            // The caller may have gone meanwhile.
            (void)!::send(peer, word.constData(), static_cast<std::size_t>(word.size()), MSG_NOSIGNAL);
        }
        close(peer);
    }

    ScratchFolder m_folder;
    QByteArrayList m_words;
    int m_listening = -1;
    std::thread m_thread;
};

const QByteArray taken = "OK 0123456789abcdef\r\n";

Result<QJsonObject, RemoteError> ask(const QByteArrayList& words)
{
    const ScriptedBus bus(words);
    const auto caller = BusCaller::open({"/nowhere/bus", bus.socket()});
    if (!caller)
        return failure(RemoteError::noConnection);
    return caller->ask(RemoteRequest::status).result();
}

} // namespace

TEST(BusCaller, ThereIsNoneWhereNoBusTakesIt)
{
    EXPECT_EQ(BusCaller::open({}), nullptr);
    EXPECT_EQ(BusCaller::open({"/nowhere/bus", QByteArray(500, 'x')}), nullptr);
    for (const char* answer : {"REJECTED EXTERNAL\r\n", "ERROR\r\n"}) {
        const ScriptedBus bus({answer});
        EXPECT_EQ(BusCaller::open({bus.socket()}), nullptr) << answer;
    }
    const ScriptedBus endless({QByteArray(4000, 'x')});
    EXPECT_EQ(BusCaller::open({endless.socket()}), nullptr);
}

TEST(BusCaller, ABusThatGoesAwayIsNoConnection)
{
    const auto answer = ask({taken});
    ASSERT_FALSE(answer);
    EXPECT_EQ(answer.error(), RemoteError::noConnection);
}

TEST(BusCaller, WhatIsNoMessageIsNoAnswer)
{
    const auto answer = ask({taken, QByteArray(100, '?')});
    ASSERT_FALSE(answer);
    EXPECT_NE(answer.error(), RemoteError::notRunning);
}

TEST(BusCaller, ItIsNeverTheRunningProgram)
{
    // It listens on until the greeting has come.
    const ScriptedBus bus({taken, {}, {}});
    const auto caller = BusCaller::open({bus.socket()});
    ASSERT_NE(caller, nullptr);
    EXPECT_EQ(caller->claim({}), RemoteControl::Claim::impossible);
}

} // namespace tulvane::test
