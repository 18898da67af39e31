#include <platform/linux/atspi/AtspiFront.h>

#include <QDBusConnection>

#include <utility>

namespace tulvane {

namespace {

const Accessible registryRoot{QStringLiteral("org.a11y.atspi.Registry"), accessibleRootPath};
const Accessible registry{QStringLiteral("org.a11y.atspi.Registry"),
                          QStringLiteral("/org/a11y/atspi/registry")};

/// A program that has just started is busy with itself.
constexpr AccessibilityBus::Limit nameLimit{10'000};
/// So often the window in front is looked for while programs do not answer, and with this pause.
constexpr int searches = 20;
constexpr std::chrono::milliseconds searchPause{500};

} // namespace

AtspiFront::AtspiFront(QString sessionBusAddress) : m_sessionAddress(std::move(sessionBusAddress))
{
    begin();
}

AtspiFront::~AtspiFront()
{
    m_lifetime.end();
    m_link->close();
}

AtspiFront::Window AtspiFront::current()
{
    if (!m_bus || !m_bus->isOpen())
        begin();
    return m_window;
}

QCoro::Task<> AtspiFront::begin()
{
    if (m_isBeginning || m_sessionAddress.isEmpty())
        co_return;
    const Lifetime::Guard alive = m_lifetime.guard();
    m_isBeginning = true;
    m_bus.reset();
    setWindow({});
    m_hasHeard = false;
    auto bus = co_await AccessibilityBus::open(m_link, m_sessionAddress, {});
    if (!alive)
        co_return;
    m_isBeginning = false;
    m_bus = std::move(bus);
    if (!m_bus)
        co_return;
    listen();
    for (const char* event : {"Window:Activate", "Window:Deactivate"}) {
        auto asked = m_bus->call(registry, QStringLiteral("org.a11y.atspi.Registry"),
                                 QStringLiteral("RegisterEvent"), {QString::fromUtf8(event)});
        (void)co_await asked;
        if (!alive)
            co_return;
    }
    co_await findActive();
}

void AtspiFront::listen()
{
    const QString events = QStringLiteral("org.a11y.atspi.Event.Window");
    QDBusConnection bus(m_bus->connectionName());
    // The toolkits do not agree on how the names are written.
    for (const char* name : {"Activate", "activate"})
        bus.connect({}, {}, events, QString::fromUtf8(name), this, SLOT(activated(QDBusMessage)));
    for (const char* name : {"Deactivate", "deactivate"})
        bus.connect({}, {}, events, QString::fromUtf8(name), this, SLOT(deactivated(QDBusMessage)));
    const QString service = QStringLiteral("org.freedesktop.DBus");
    bus.connect(service, QStringLiteral("/org/freedesktop/DBus"), service, QStringLiteral("NameOwnerChanged"),
                this, SLOT(ownerChanged(QString, QString, QString)));
}

QCoro::Task<> AtspiFront::findActive()
{
    const Lifetime::Guard alive = m_lifetime.guard();
    const std::shared_ptr<AccessibilityBus> bus = m_bus;
    for (int looks = 0; looks < searches; ++looks) {
        const bool isOver = co_await search();
        if (!alive || isOver || m_hasHeard || bus != m_bus)
            co_return;
        (void)co_await m_link->pause(searchPause);
        if (!alive || m_hasHeard || bus != m_bus)
            co_return;
    }
}

QCoro::Task<bool> AtspiFront::search()
{
    const Lifetime::Guard alive = m_lifetime.guard();
    const std::shared_ptr<AccessibilityBus> bus = m_bus;
    const auto childrenOf = [bus](const Accessible& parent) {
        return bus->call(parent, accessibleInterfaces::accessible, QStringLiteral("GetChildren"));
    };
    auto asked = childrenOf(registryRoot);
    const auto programs = busAnswer::toAccessibles(co_await asked);
    bool haveAllAnswered = programs.has_value();
    for (const Accessible& program : programs.value_or(QList<Accessible>())) {
        auto windowsAsked = childrenOf(program);
        const auto windows = busAnswer::toAccessibles(co_await windowsAsked);
        haveAllAnswered = haveAllAnswered && windows;
        for (const Accessible& window : windows.value_or(QList<Accessible>())) {
            auto stateAsked = bus->call(window, accessibleInterfaces::accessible, QStringLiteral("GetState"));
            const auto states = busAnswer::toStates(co_await stateAsked);
            if (!alive || m_hasHeard || bus != m_bus)
                co_return true;
            haveAllAnswered = haveAllAnswered && states;
            if (states && states->has(AccessibleStates::State::active)) {
                setWindow(window);
                co_return true;
            }
        }
    }
    co_return haveAllAnswered;
}

void AtspiFront::activated(const QDBusMessage& message)
{
    m_hasHeard = true;
    setWindow({message.service(), message.path()});
}

void AtspiFront::deactivated(const QDBusMessage& message)
{
    m_hasHeard = true;
    // The next window's program may have been quicker.
    if (m_window.place == Accessible{message.service(), message.path()})
        setWindow({});
}

void AtspiFront::ownerChanged(const QString& name, const QString&, const QString& after)
{
    if (after.isEmpty() && name == m_window.place.service)
        setWindow({});
}

void AtspiFront::setWindow(const Accessible& place)
{
    m_window = {place, 0, {}};
    if (m_window.isKnown())
        describe();
}

QCoro::Task<> AtspiFront::describe()
{
    const Lifetime::Guard alive = m_lifetime.guard();
    const Accessible place = m_window.place;
    auto processAsked = m_bus->processOf(place, nameLimit);
    auto nameAsked = m_bus->property({place.service, accessibleRootPath}, accessibleInterfaces::accessible,
                                     QStringLiteral("Name"), nameLimit);
    const auto process = busAnswer::toUnsigned(co_await processAsked);
    if (!alive || m_window.place != place)
        co_return;
    m_window.process = process.value_or(0);
    const auto name = busAnswer::toStringProperty(co_await nameAsked);
    if (alive && m_window.place == place)
        m_window.program = name.value_or(QString());
}

} // namespace tulvane
