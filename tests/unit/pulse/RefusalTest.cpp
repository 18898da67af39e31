#include <platform/linux/pulse/PulseAudioInput.h>
#include <platform/linux/pulse/PulseServer.h>
#include <support/Await.h>
#include <support/ScratchFolder.h>

#include <QtEndian>

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <cstring>
#include <thread>

using namespace tulvane;
using namespace tulvane::test;

namespace {

/// A sound server that refuses every client that introduces itself.
class RefusingServer final {
public:
    explicit RefusingServer(const QString& path)
        : m_listening(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0))
    {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        const QByteArray name = path.toUtf8();
        std::memcpy(address.sun_path, name.constData(), static_cast<std::size_t>(name.size()));
        if (::bind(m_listening, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) != 0 ||
            ::listen(m_listening, 4) != 0)
            qFatal("no socket at %s", name.constData());
        m_thread = std::thread([this] { serve(); });
    }
    RefusingServer(const RefusingServer&) = delete;
    RefusingServer& operator=(const RefusingServer&) = delete;
    ~RefusingServer()
    {
        ::shutdown(m_listening, SHUT_RDWR);
        m_thread.join();
        ::close(m_listening);
    }

private:
    void serve() const
    {
        for (int client = 0; (client = ::accept(m_listening, nullptr, nullptr)) >= 0; ::close(client))
            refuse(client);
    }
    static void refuse(int client)
    {
        // A descriptor of five numbers, then tagged numbers: the command, and the tag that an answer bears.
        constexpr std::size_t descriptor = 20;
        std::array<char, 4096> request{};
        std::size_t got = 0;
        while (got < descriptor + 10) {
            const ssize_t more = ::recv(client, request.data() + got, request.size() - got, 0);
            if (more <= 0)
                return;
            got += static_cast<std::size_t>(more);
        }
        constexpr quint32 error = 0;
        constexpr quint32 accessDenied = 1;
        const auto tag = qFromBigEndian<quint32>(request.data() + descriptor + 6);
        QByteArray answer = number(15) + number(0xFFFFFFFF) + number(0) + number(0) + number(0);
        for (const quint32 value : {error, tag, accessDenied})
            answer += 'L' + number(value);
        (void)!::send(client, answer.constData(), static_cast<std::size_t>(answer.size()), MSG_NOSIGNAL);
        while (::recv(client, request.data(), request.size(), 0) > 0) {
        }
    }
    static QByteArray number(quint32 value)
    {
        QByteArray bytes(sizeof value, Qt::Uninitialized);
        qToBigEndian(value, bytes.data());
        return bytes;
    }

    int m_listening;
    std::thread m_thread;
};

} // namespace

TEST(Refusal, OfTheSoundServerIsADeniedMicrophone)
{
    const ScratchFolder folder;
    const RefusingServer server(folder.file(QStringLiteral("native")));
    PulseAudioInput input(QStringLiteral("unix:") + folder.file(QStringLiteral("native")));
    ASSERT_TRUE(waitUntil([&] { return input.server()->refusesMicrophone(); }));
    const auto started = input.makeEngine()->start();
    ASSERT_FALSE(started);
    EXPECT_EQ(started.error().toStdString(), "The sound server refuses access to the microphone. Allow "
                                             "Tulvane to record in your desktop's sound or "
                                             "privacy settings.");
}

TEST(Refusal, IsNotThatThereIsNoServer)
{
    const ScratchFolder folder;
    PulseAudioInput input(QStringLiteral("unix:") + folder.file(QStringLiteral("none")));
    const auto engine = input.makeEngine();
    EXPECT_FALSE(engine->start());
    EXPECT_FALSE(input.server()->refusesMicrophone());
}
