#include <platform/linux/gnome/IBusTypes.h>

#include <QDBusMetaType>
#include <QDBusVariant>
#include <QVariantMap>

namespace tulvane {

namespace {

/// The end of a text's attributes: none.
struct NoAttributes {};

QDBusArgument& operator<<(QDBusArgument& argument, const NoAttributes&)
{
    argument.beginStructure();
    argument << QStringLiteral("IBusAttrList") << QVariantMap() << QVariantList();
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, NoAttributes&)
{
    return argument;
}

} // namespace

QDBusArgument& operator<<(QDBusArgument& argument, const IBusText& text)
{
    argument.beginStructure();
    argument << QStringLiteral("IBusText") << QVariantMap() << text.text
             << QDBusVariant(QVariant::fromValue(NoAttributes{}));
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, IBusText& text)
{
    QString type;
    QVariantMap attachments;
    QDBusVariant attributes;
    argument.beginStructure();
    argument >> type >> attachments >> text.text >> attributes;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const IBusEngineFacts& engine)
{
    const QString none;
    argument.beginStructure();
    // Name, long name, description, language, licence, author, icon, layout ("default": leaves the user's),
    // rank, and eight more that may be empty.
    argument << QStringLiteral("IBusEngineDesc") << QVariantMap() << engine.name << engine.title << none
             << QStringLiteral("other") << none << none << none << QStringLiteral("default") << quint32{0}
             << none << none << none << none << none << none << none << none;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, IBusEngineFacts& engine)
{
    QString type;
    QVariantMap attachments;
    argument.beginStructure();
    argument >> type >> attachments >> engine.name >> engine.title;
    return argument; // the rest is of no interest
}

QDBusArgument& operator<<(QDBusArgument& argument, const IBusComponentFacts& component)
{
    const QString none;
    argument.beginStructure();
    // Name, description, version, licence, author, home page, program ("": it runs already), catalogue,
    // files, engines.
    argument << QStringLiteral("IBusComponent") << QVariantMap() << component.busName
             << component.engine.title << none << none << none << none << none << none << QVariantList()
             << QVariantList{QVariant::fromValue(component.engine)};
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, IBusComponentFacts&)
{
    return argument; // never received
}

QDBusArgument& operator<<(QDBusArgument& argument, const IBusContentType& type)
{
    argument.beginStructure();
    argument << type.purpose << type.hints;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, IBusContentType& type)
{
    argument.beginStructure();
    argument >> type.purpose >> type.hints;
    argument.endStructure();
    return argument;
}

void registerIBusTypes()
{
    static const bool once = [] {
        qDBusRegisterMetaType<NoAttributes>();
        qDBusRegisterMetaType<IBusText>();
        qDBusRegisterMetaType<IBusEngineFacts>();
        qDBusRegisterMetaType<IBusComponentFacts>();
        qDBusRegisterMetaType<IBusContentType>();
        return true;
    }();
    Q_UNUSED(once)
}

QVariant withoutVariants(QVariant value)
{
    while (value.canConvert<QDBusVariant>() && value.userType() == qMetaTypeId<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value;
}

std::optional<QString> engineNameIn(const QVariant& answer)
{
    const QVariant inner = withoutVariants(answer);
    if (inner.userType() != qMetaTypeId<QDBusArgument>())
        return std::nullopt;
    const auto argument = inner.value<QDBusArgument>();
    // Some services put one variant more around it than others.
    if (argument.currentType() == QDBusArgument::VariantType) {
        QDBusVariant nested;
        argument >> nested;
        return engineNameIn(nested.variant());
    }
    if (argument.currentType() != QDBusArgument::StructureType)
        return std::nullopt;
    IBusEngineFacts engine;
    argument >> engine;
    return engine.name.isEmpty() ? std::nullopt : std::optional(engine.name);
}

} // namespace tulvane
