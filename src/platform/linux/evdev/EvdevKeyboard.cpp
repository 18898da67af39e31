#include <platform/linux/evdev/EvdevKeyboard.h>

#include <fcntl.h>
#include <linux/input.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cerrno>
#include <ctime>

namespace tulvane {

namespace {

constexpr quint16 bitsInByte = 8;

std::chrono::milliseconds ageOf(const input_event& event)
{
    using namespace std::chrono;
    const auto happened = seconds(event.input_event_sec) + microseconds(event.input_event_usec);
    const auto age = steady_clock::now().time_since_epoch() - happened;
    return age > nanoseconds(0) && age < seconds(10) ? duration_cast<milliseconds>(age) : milliseconds(0);
}

int openDevice(const QString& path)
{
    return ::open(path.toLocal8Bit().constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
}

/// Why there is none, right after the failure.
EvdevKeyboard::Opened withoutFile()
{
    return errno == EACCES || errno == EPERM ? EvdevKeyboard::Opened::denied
                                             : EvdevKeyboard::Opened::noKeyboard;
}

} // namespace

bool EvdevKeyboard::has(const Keys& keys, quint16 key)
{
    return (keys.at(key / bitsInByte) >> (key % bitsInByte) & 1) != 0;
}

bool EvdevKeyboard::readKeys(int file, Keys& keys)
{
    // A mouse has keys as well, though none of these.
    return ::ioctl(file, EVIOCGBIT(EV_KEY, keyBytes), keys.data()) >= 0 &&
           (has(keys, KEY_LEFTCTRL) || has(keys, KEY_RIGHTCTRL) || has(keys, KEY_LEFTSHIFT));
}

EvdevKeyboard::Opened EvdevKeyboard::look(const QString& path)
{
    const int file = openDevice(path);
    if (file < 0)
        return withoutFile();
    Keys keys{};
    const bool isKeyboard = readKeys(file, keys);
    ::close(file);
    return isKeyboard ? Opened::yes : Opened::noKeyboard;
}

EvdevKeyboard::Opened EvdevKeyboard::open(const QString& path, Changed changed, std::function<void()> gone,
                                          std::unique_ptr<EvdevKeyboard>& keyboard)
{
    const int file = openDevice(path);
    if (file < 0)
        return withoutFile();
    std::unique_ptr<EvdevKeyboard> made(new EvdevKeyboard(file));
    if (!readKeys(file, made->m_keys))
        return Opened::noKeyboard;
    int clock = CLOCK_MONOTONIC;
    (void)::ioctl(file, EVIOCSCLOCKID, &clock);
    (void)::ioctl(file, EVIOCGKEY(keyBytes), made->m_held.data());
    made->m_changed = std::move(changed);
    made->m_gone = std::move(gone);
    EvdevKeyboard* const one = made.get();
    QObject::connect(&made->m_readable, &QSocketNotifier::activated, &made->m_readable,
                     [one] { one->read(); });
    keyboard = std::move(made);
    return Opened::yes;
}

EvdevKeyboard::~EvdevKeyboard()
{
    m_readable.setEnabled(false);
    ::close(m_file);
}

bool EvdevKeyboard::isCapsLockOn() const
{
    std::array<std::uint8_t, 2> lights{};
    return ::ioctl(m_file, EVIOCGLED(lights.size()), lights.data()) >= 0 && (lights[0] >> LED_CAPSL & 1) != 0;
}

void EvdevKeyboard::read()
{
    std::array<input_event, 32> events{};
    const ssize_t size = ::read(m_file, events.data(), sizeof events);
    if (size <= 0) {
        if (size < 0 && (errno == EAGAIN || errno == EINTR))
            return;
        m_readable.setEnabled(false);
        const auto gone = m_gone;
        gone();
        return;
    }
    constexpr qint32 repeated = 2;
    for (std::size_t i = 0; i < static_cast<std::size_t>(size) / sizeof(input_event); ++i) {
        const input_event& event = events.at(i);
        if (event.type == EV_SYN && event.code == SYN_DROPPED)
            catchUp();
        else if (event.type == EV_KEY && event.value != repeated)
            note(event.code, event.value != 0, ageOf(event));
    }
}

void EvdevKeyboard::note(quint16 key, bool isDown, std::chrono::milliseconds age)
{
    if (key / bitsInByte >= keyBytes || has(m_held, key) == isDown)
        return;
    m_held.at(key / bitsInByte) ^= static_cast<std::uint8_t>(1U << (key % bitsInByte));
    m_changed(key, isDown, age);
}

void EvdevKeyboard::catchUp()
{
    Keys now{};
    if (::ioctl(m_file, EVIOCGKEY(keyBytes), now.data()) < 0)
        return;
    for (quint16 key = 0; key < keyBytes * bitsInByte; ++key)
        note(key, has(now, key), {});
}

} // namespace tulvane
