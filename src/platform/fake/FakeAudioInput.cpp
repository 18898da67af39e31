#include <platform/fake/FakeAudioInput.h>

#include <QObject>
#include <QTimer>

#include <algorithm>
#include <mutex>
#include <utility>

namespace tulvane {

/// What the input and its engines share. The lock is held while a tap runs, so that removing it waits.
struct FakeAudioInput::State {
    mutable std::mutex lock;
    AudioFormat format{48000, 1};
    QString deviceName = QStringLiteral("Fake Microphone");
    std::optional<QString> startFailure;
    QStringList calls;
    int enginesMade = 0;
    Engine* running = nullptr;
};

class FakeAudioInput::Engine final : public AudioEngine {
public:
    explicit Engine(std::shared_ptr<State> state) : m_state(std::move(state))
    {
        const std::scoped_lock guard(m_state->lock);
        m_format = m_state->format;
        m_deviceName = m_state->deviceName;
        ++m_state->enginesMade;
        m_state->calls.append(QStringLiteral("make"));
    }
    Engine(const Engine&) = delete;
    Engine& operator=(const Engine&) = delete;
    ~Engine() override
    {
        const std::scoped_lock guard(m_state->lock);
        close();
        m_state->calls.append(QStringLiteral("drop"));
    }

    [[nodiscard]] AudioFormat inputFormat() const override { return m_format; }
    [[nodiscard]] QString deviceName() const override { return m_deviceName; }

    void installTap(std::uint32_t mostFrames, AudioTap tap) override
    {
        const std::scoped_lock guard(m_state->lock);
        m_state->calls.append(QStringLiteral("tap %1").arg(mostFrames));
        m_mostFrames = mostFrames;
        m_tap = std::move(tap);
    }

    void removeTap() override
    {
        const std::scoped_lock guard(m_state->lock);
        m_state->calls.append(QStringLiteral("untap"));
        m_tap = nullptr;
    }

    [[nodiscard]] Result<void, QString> start() override
    {
        const std::scoped_lock guard(m_state->lock);
        m_state->calls.append(QStringLiteral("start"));
        if (m_state->startFailure)
            return failure(*m_state->startFailure);
        m_state->running = this;
        return {};
    }

    void stop() override
    {
        const std::scoped_lock guard(m_state->lock);
        m_state->calls.append(QStringLiteral("stop"));
        close();
    }

    void setConfigurationChanged(std::function<void()> changed) override { m_changed = std::move(changed); }
    void setStalled(std::function<void()> stalled) override { m_stalled = std::move(stalled); }

    /// With the lock held, as `hasTap`.
    bool feed(std::span<const float> samples, std::size_t framesPerBuffer)
    {
        if (!m_tap)
            return false;
        const std::size_t frames = std::min<std::size_t>(framesPerBuffer, m_mostFrames);
        const std::size_t most = frames * static_cast<std::size_t>(std::max(m_format.channels, 1));
        while (!samples.empty()) {
            const auto buffer = samples.first(std::min(most, samples.size()));
            m_tap(buffer);
            samples = samples.subspan(buffer.size());
        }
        return true;
    }
    [[nodiscard]] bool hasTap() const { return m_tap != nullptr; }

    void change() { lose(&Engine::m_changed); }
    void stall() { lose(&Engine::m_stalled); }

private:
    using Handler = std::function<void()>;

    void lose(Handler Engine::* handler)
    {
        if (std::exchange(m_lost, true))
            return;
        QTimer::singleShot(0, &m_context, [this, handler] {
            const bool open = [this] {
                const std::scoped_lock guard(m_state->lock);
                return m_state->running == this;
            }();
            // From a copy of its own: the handler may destroy this engine.
            if (const Handler called = this->*handler; called && open)
                called();
        });
    }

    void close()
    {
        if (m_state->running == this)
            m_state->running = nullptr;
    }

    std::shared_ptr<State> m_state;
    AudioFormat m_format;
    QString m_deviceName;
    std::uint32_t m_mostFrames = 0;
    AudioTap m_tap;
    Handler m_changed;
    Handler m_stalled;
    bool m_lost = false;
    QObject m_context;
};

FakeAudioInput::FakeAudioInput() : m_state(std::make_shared<State>()) {}

FakeAudioInput::~FakeAudioInput() = default;

std::unique_ptr<AudioEngine> FakeAudioInput::makeEngine()
{
    return std::make_unique<Engine>(m_state);
}

void FakeAudioInput::setFormat(AudioFormat format)
{
    const std::scoped_lock guard(m_state->lock);
    m_state->format = format;
}

void FakeAudioInput::setDeviceName(const QString& name)
{
    const std::scoped_lock guard(m_state->lock);
    m_state->deviceName = name;
}

void FakeAudioInput::setStartFailure(std::optional<QString> reason)
{
    const std::scoped_lock guard(m_state->lock);
    m_state->startFailure = std::move(reason);
}

bool FakeAudioInput::push(std::span<const float> interleaved, std::size_t framesPerBuffer)
{
    const std::scoped_lock guard(m_state->lock);
    return m_state->running != nullptr && m_state->running->feed(interleaved, framesPerBuffer);
}

FakeAudioInput::Engine* FakeAudioInput::running() const
{
    const std::scoped_lock guard(m_state->lock);
    return m_state->running;
}

void FakeAudioInput::changeConfiguration()
{
    if (Engine* const engine = running())
        engine->change();
}

void FakeAudioInput::stall()
{
    if (Engine* const engine = running())
        engine->stall();
}

int FakeAudioInput::enginesMade() const
{
    const std::scoped_lock guard(m_state->lock);
    return m_state->enginesMade;
}

bool FakeAudioInput::isOpen() const
{
    const std::scoped_lock guard(m_state->lock);
    return m_state->running != nullptr;
}

bool FakeAudioInput::hasTap() const
{
    const std::scoped_lock guard(m_state->lock);
    return m_state->running != nullptr && m_state->running->hasTap();
}

QStringList FakeAudioInput::calls() const
{
    const std::scoped_lock guard(m_state->lock);
    return m_state->calls;
}

void FakeAudioInput::forgetCalls()
{
    const std::scoped_lock guard(m_state->lock);
    m_state->calls.clear();
}

} // namespace tulvane
