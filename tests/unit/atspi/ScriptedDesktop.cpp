#include "ScriptedDesktop.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusVariant>

#include <csignal>

namespace tulvane::test {

struct Reference {
    QString service;
    QDBusObjectPath path;
};

QDBusArgument& operator<<(QDBusArgument& argument, const Reference& reference)
{
    argument.beginStructure();
    argument << reference.service << reference.path;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, Reference& reference)
{
    argument.beginStructure();
    argument >> reference.service >> reference.path;
    argument.endStructure();
    return argument;
}

namespace {

QString freshName()
{
    static int count = 0;
    return QStringLiteral("scripted-%1").arg(++count);
}

/// A program's offset from an index, and back: Qt counts UTF-16 units, the others code points.
int toOffset(bool utf16, const QString& text, int index)
{
    // One outside the text is what a confused program says.
    if (utf16 || index < 0 || index > text.size())
        return index;
    return static_cast<int>(text.left(index).toUcs4().size());
}

int toIndex(bool utf16, const QString& text, int offset)
{
    int index = 0;
    while (index <= text.size() && toOffset(utf16, text, index) < offset)
        ++index;
    // A pair of units is one code point; the index stands behind both.
    return index < text.size() && text.at(index).isLowSurrogate() ? index + 1 : index;
}

QList<quint32> stateWords(const ScriptedObject& object)
{
    quint64 bits = 0;
    for (const auto state : object.states)
        bits |= quint64{1} << static_cast<int>(state);
    return {static_cast<quint32>(bits), static_cast<quint32>(bits >> 32)};
}

QList<Reference> references(const QList<Accessible>& objects)
{
    QList<Reference> all;
    for (const Accessible& object : objects)
        all.append({object.service, QDBusObjectPath(object.path)});
    return all;
}

} // namespace

ScriptedProgram::ScriptedProgram(const QString& bus, const QString& toolkit)
    : m_name(freshName()),
      m_toolkit(toolkit),
      m_connection(QDBusConnection::connectToBus(bus, m_name))
{
    qDBusRegisterMetaType<Reference>();
    qDBusRegisterMetaType<QList<Reference>>();
    qDBusRegisterMetaType<QList<quint32>>();
    m_connection.registerVirtualObject(QStringLiteral("/"), this, QDBusConnection::SubPath);
}

ScriptedProgram::~ScriptedProgram()
{
    vanish();
}

void ScriptedProgram::vanish()
{
    m_connection.unregisterObject(QStringLiteral("/"), QDBusConnection::UnregisterTree);
    m_connection = QDBusConnection(QString());
    QDBusConnection::disconnectFromBus(m_name);
}

void ScriptedProgram::tell(const QString& event, const QString& path)
{
    m_connection.send(QDBusMessage::createSignal(path, QStringLiteral("org.a11y.atspi.Event.Window"), event));
}

bool ScriptedProgram::handleMessage(const QDBusMessage& message, const QDBusConnection& connection)
{
    const QVariantList arguments = message.arguments();
    const bool isProperty = message.member() == u"Get";
    const QString method = isProperty ? arguments.at(1).toString() : message.member();
    called.append(method);
    if (onCall)
        onCall(method);
    ScriptedObject& target = object(message.path());
    if (frozen || target.silent.contains(method))
        return true;
    if (target.refusing.contains(method)) {
        connection.send(message.createErrorReply(QDBusError::Failed, QStringLiteral("no")));
        return true;
    }
    if (isProperty) {
        const QVariant value = property(method, target);
        connection.send(message.createReply(QVariant::fromValue(QDBusVariant(value))));
        return true;
    }
    const auto values = answer(method, arguments, target);
    connection.send(values ? message.createReply(*values)
                           : message.createErrorReply(QDBusError::UnknownMethod, method));
    return true;
}

QVariant ScriptedProgram::property(const QString& name, const ScriptedObject& object) const
{
    const bool utf16 = m_toolkit == u"Qt";
    if (name == u"ChildCount")
        return object.childCount.value_or(static_cast<int>(object.children.size()));
    if (name == u"CaretOffset")
        return toOffset(utf16, object.text, object.caret);
    if (name == u"CharacterCount")
        return toOffset(utf16, object.text, static_cast<int>(object.text.size()));
    return m_toolkit;
}

std::optional<QVariantList> ScriptedProgram::answer(const QString& method, const QVariantList& arguments,
                                                    ScriptedObject& object)
{
    if (method == u"GetAddress")
        return QVariantList{accessibilityAddress};
    if (method == u"RegisterEvent")
        return QVariantList();
    if (method == u"GetChildren")
        return QVariantList{QVariant::fromValue(references(object.children))};
    if (method == u"GetState")
        return QVariantList{QVariant::fromValue(stateWords(object))};
    if (method == u"GetInterfaces")
        return QVariantList{object.interfaces};
    if (method == u"GetRole")
        return QVariantList{object.role};
    if (method == u"GetRoleName")
        return QVariantList{QStringLiteral("role %1").arg(object.role)};
    return answerAboutText(method, arguments, object);
}

std::optional<QVariantList>
ScriptedProgram::answerAboutText(const QString& method, const QVariantList& arguments, ScriptedObject& object)
{
    const bool utf16 = m_toolkit == u"Qt";
    if (method == u"GetText") {
        if (m_later && --m_later->first == 0)
            object.text = std::exchange(m_later, {})->second;
        return QVariantList{object.text};
    }
    if (method == u"GetNSelections")
        return QVariantList{object.selection ? 1 : 0};
    if (method == u"GetSelection")
        return QVariantList{toOffset(utf16, object.text, object.selection->first),
                            toOffset(utf16, object.text, object.selection->second)};
    if (method == u"SetCaretOffset") {
        object.caret = toIndex(utf16, object.text, arguments.at(0).toInt());
        object.selection.reset();
        return QVariantList{true};
    }
    if (method == u"SetSelection" || method == u"AddSelection") {
        if ((method == u"SetSelection") != object.selection.has_value())
            return QVariantList{false};
        const qsizetype last = arguments.size() - 1;
        object.selection = {toIndex(utf16, object.text, arguments.at(last - 1).toInt()),
                            toIndex(utf16, object.text, arguments.at(last).toInt())};
        return QVariantList{true};
    }
    return QVariantList{edit(method, arguments, object)};
}

bool ScriptedProgram::edit(const QString& method, const QVariantList& arguments, ScriptedObject& object)
{
    const bool utf16 = m_toolkit == u"Qt";
    if (method == u"InsertText")
        return insert(arguments, object);
    if (!object.removes)
        return false;
    if (method == u"SetTextContents") {
        object.text = arguments.at(0).toString();
        object.selection.reset();
        return true;
    }
    const int start = toIndex(utf16, object.text, arguments.at(0).toInt());
    const int end = toIndex(utf16, object.text, arguments.at(1).toInt());
    object.text.remove(start, end - start);
    return true;
}

bool ScriptedProgram::insert(const QVariantList& arguments, ScriptedObject& object)
{
    const int at = toIndex(m_toolkit == u"Qt", object.text, arguments.at(0).toInt());
    const QString text = arguments.at(1).toString();
    insertedLength = arguments.at(2).toInt();
    const qsizetype size = object.text.size();
    switch (object.onInsert) {
    case OnInsert::insert:
        object.text.insert(at, text);
        break;
    case OnInsert::ignore:
        break;
    case OnInsert::later:
        m_later = {3, QString(object.text).insert(at, text)};
        break;
    case OnInsert::refuse:
        return false;
    case OnInsert::insertPart:
        object.text.insert(at, text.left(text.size() / 2));
        break;
    case OnInsert::cutEnd:
        object.text = object.text.insert(at, text).left(size);
        object.selection.reset();
        break;
    case OnInsert::overwrite:
        object.text.replace(object.selection->first, object.selection->second - object.selection->first,
                            text);
        object.selection.reset();
        break;
    case OnInsert::upperCase:
        object.text.insert(at, text.toUpper());
        break;
    }
    return true;
}

ScriptedDesktop::ScriptedDesktop()
{
    m_registry = std::make_unique<ScriptedProgram>(m_bus.address(), QString());
    m_registry->accessibilityAddress = m_bus.address();
    if (!m_registry->connection().registerService(QStringLiteral("org.a11y.Bus")) ||
        !m_registry->connection().registerService(QStringLiteral("org.a11y.atspi.Registry")))
        qFatal("the bus refused a name");
}

ScriptedDesktop::~ScriptedDesktop()
{
    m_programs.clear();
    m_registry = nullptr;
    killBus();
}

void ScriptedDesktop::killBus()
{
    m_bus.end();
}

ScriptedProgram& ScriptedDesktop::addProgram(const QString& toolkit)
{
    auto program = std::make_unique<ScriptedProgram>(m_bus.address(), toolkit);
    m_registry->object(accessibleRootPath).children.append(program->at(accessibleRootPath));
    m_programs.push_back(std::move(program));
    return *m_programs.back();
}

ScriptedProgram& ScriptedDesktop::addField(const QString& marked, const QString& toolkit)
{
    using State = AccessibleStates::State;
    ScriptedProgram& program = addProgram(toolkit);
    const QString panel = QStringLiteral("/panel");
    program.object(accessibleRootPath).children = {program.at(window)};
    program.object(window).children = {program.at(panel)};
    program.object(window).states = {State::active, State::showing};
    program.object(panel).children = {program.at(QStringLiteral("/label")), program.at(field)};
    program.object(panel).states = {State::showing};
    program.object(QStringLiteral("/label")).states = {State::showing};
    ScriptedObject& element = program.object(field);
    element.states = {State::showing, State::focused, State::editable};
    element.interfaces += {accessibleInterfaces::text, accessibleInterfaces::editableText};
    element.text = marked;
    const bool hasSelection = marked.contains(u'[');
    const auto start = static_cast<int>(marked.indexOf(hasSelection ? u'[' : u'|'));
    element.text.remove(start, 1);
    element.caret = start;
    if (hasSelection) {
        element.caret = static_cast<int>(element.text.indexOf(u']'));
        element.text.remove(element.caret, 1);
        element.selection = {start, element.caret};
    }
    return program;
}

QString marked(const ScriptedObject& field)
{
    QString text = field.text;
    if (!field.selection)
        return text.insert(field.caret, u'|');
    return text.insert(field.selection->second, u']').insert(field.selection->first, u'[');
}

} // namespace tulvane::test

Q_DECLARE_METATYPE(tulvane::test::Reference)
