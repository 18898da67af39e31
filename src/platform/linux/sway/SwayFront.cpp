#include <platform/linux/sway/SwayFront.h>

#include <QJsonArray>

namespace tulvane {

namespace {

FrontProgram programOf(const QJsonObject& window)
{
    FrontProgram program;
    // Workspaces and outputs have the focus where no window has.
    if (!window.contains(QLatin1StringView("pid")))
        return program;
    program.window = static_cast<quint64>(window.value(QLatin1StringView("id")).toInteger());
    program.process = static_cast<quint32>(window.value(QLatin1StringView("pid")).toInteger());
    program.isX11 = window.value(QLatin1StringView("shell")) == QLatin1StringView("xwayland");
    const QJsonObject properties = window.value(QLatin1StringView("window_properties")).toObject();
    for (const QString& name : {window.value(QLatin1StringView("app_id")).toString(),
                                properties.value(QLatin1StringView("class")).toString(),
                                properties.value(QLatin1StringView("instance")).toString()}) {
        if (!name.isEmpty())
            program.classes.append(name);
    }
    return program;
}

} // namespace

FrontProgram SwayFront::inTree(const QJsonObject& node)
{
    if (node.value(QLatin1StringView("focused")).toBool())
        return programOf(node);
    for (const auto& part : {QLatin1StringView("nodes"), QLatin1StringView("floating_nodes")}) {
        const QJsonArray children = node.value(part).toArray();
        for (const QJsonValue& child : children) {
            const FrontProgram program = inTree(child.toObject());
            if (program.window != 0)
                return program;
        }
    }
    return {};
}

FrontProgram SwayFront::current()
{
    const auto tree = m_connection->ask(SwayConnection::Question::tree);
    return tree ? inTree(tree->object()) : FrontProgram();
}

} // namespace tulvane
