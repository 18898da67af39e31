#include <platform/linux/desktop/LastingBus.h>
#include <platform/linux/kde/KGlobalAccel.h>

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusReply>

namespace tulvane {

namespace {

constexpr int patience = 2000; // ms

/// Up to four key combinations that are pressed one after the other; the rest is zero.
struct KdeKeySequence {
    QList<int> keys;
};

QDBusArgument& operator<<(QDBusArgument& argument, const KdeKeySequence& sequence)
{
    argument.beginStructure();
    argument << sequence.keys;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, KdeKeySequence& sequence)
{
    argument.beginStructure();
    argument >> sequence.keys;
    argument.endStructure();
    return argument;
}

struct KdeMatchType {
    int value = 0;
};

QDBusArgument& operator<<(QDBusArgument& argument, const KdeMatchType& type)
{
    argument.beginStructure();
    argument << type.value;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, KdeMatchType& type)
{
    argument.beginStructure();
    argument >> type.value;
    argument.endStructure();
    return argument;
}

void registerTypes()
{
    static const bool once = [] {
        qDBusRegisterMetaType<KdeKeySequence>();
        qDBusRegisterMetaType<QList<KdeKeySequence>>();
        qDBusRegisterMetaType<KdeMatchType>();
        return true;
    }();
    Q_UNUSED(once)
}

KdeKeySequence sequenceOf(int key)
{
    return {{key, 0, 0, 0}};
}

QList<KdeKeySequence> sequencesOf(const QList<int>& keys)
{
    QList<KdeKeySequence> sequences;
    for (const int key : keys)
        sequences.append(sequenceOf(key));
    return sequences;
}

/// The first combination of each sequence; none where there was no answer.
std::optional<QList<int>> keysOf(const QDBusMessage& reply)
{
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty())
        return std::nullopt;
    QList<int> keys;
    for (const auto& sequence : qdbus_cast<QList<KdeKeySequence>>(reply.arguments().constFirst())) {
        if (!sequence.keys.isEmpty() && sequence.keys.constFirst() != 0)
            keys.append(sequence.keys.constFirst());
    }
    return keys;
}

QDBusMessage callOf(const QString& method, const QVariantList& arguments)
{
    registerTypes();
    QDBusMessage call = QDBusMessage::createMethodCall(KGlobalAccel::service, KGlobalAccel::path,
                                                       KGlobalAccel::interface, method);
    call.setAutoStartService(false);
    call.setArguments(arguments);
    return call;
}

QDBusMessage ask(const std::shared_ptr<LastingBus>& bus, const QString& method, const QVariantList& arguments)
{
    return bus->connection().call(callOf(method, arguments), QDBus::Block, patience);
}

quint32 flagOf(KGlobalAccel::Keys how)
{
    constexpr quint32 present = 2;
    constexpr quint32 notAsStored = 4;
    constexpr quint32 isDefault = 8;
    switch (how) {
    case KGlobalAccel::Keys::asStored:
        return present;
    case KGlobalAccel::Keys::asGiven:
        return present | notAsStored;
    case KGlobalAccel::Keys::byDefault:
        return isDefault;
    }
    Q_UNREACHABLE();
}

} // namespace

QString KGlobalAccel::owner() const
{
    const QDBusConnection bus = m_bus->connection();
    return bus.isConnected() ? bus.interface()->serviceOwner(service).value() : QString();
}

QDBusPendingCall KGlobalAccel::askForAnything() const
{
    constexpr int longPatience = 10'000; // ms
    return m_bus->connection().asyncCall(callOf(QStringLiteral("allMainComponents"), {}), longPatience);
}

QList<KGlobalAccel::Action> KGlobalAccel::holders(int key) const
{
    const QDBusMessage reply =
        ask(m_bus, QStringLiteral("globalShortcutsByKey"),
            {QVariant::fromValue(sequenceOf(key)), QVariant::fromValue(KdeMatchType{})});
    QList<Action> found;
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty())
        return found;
    const auto list = reply.arguments().constFirst().value<QDBusArgument>();
    list.beginArray();
    while (!list.atEnd()) {
        Action action;
        QString context;
        QString contextTitle;
        QList<int> keys;
        QList<int> defaults;
        list.beginStructure();
        list >> action.name >> action.title >> action.component >> action.componentTitle >> context >>
            contextTitle >> keys >> defaults;
        list.endStructure();
        found.append(action);
    }
    list.endArray();
    return found;
}

QString KGlobalAccel::add(const Action& action) const
{
    ask(m_bus, QStringLiteral("doRegister"), {action.words()});
    const QDBusReply<QDBusObjectPath> place = ask(m_bus, QStringLiteral("getComponent"), {action.component});
    return place.isValid() ? place.value().path() : QString();
}

std::optional<QList<int>> KGlobalAccel::defaultKeys(const Action& action) const
{
    return keysOf(ask(m_bus, QStringLiteral("defaultShortcutKeys"), {action.words()}));
}

void KGlobalAccel::setForeignKeys(const Action& action, const QList<int>& keys) const
{
    ask(m_bus, QStringLiteral("setForeignShortcutKeys"),
        {action.words(), QVariant::fromValue(sequencesOf(keys))});
}

std::optional<QList<int>> KGlobalAccel::setKeys(const Action& action, const QList<int>& keys, Keys how) const
{
    return keysOf(ask(m_bus, QStringLiteral("setShortcutKeys"),
                      {action.words(), QVariant::fromValue(sequencesOf(keys)), flagOf(how)}));
}

void KGlobalAccel::setInactive(const Action& action) const
{
    ask(m_bus, QStringLiteral("setInactive"), {action.words()});
}

void KGlobalAccel::setBlocked(bool isBlocked) const
{
    ask(m_bus, QStringLiteral("blockGlobalShortcuts"), {isBlocked});
}

} // namespace tulvane
