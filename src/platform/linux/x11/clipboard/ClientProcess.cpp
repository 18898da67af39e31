#include <platform/linux/x11/clipboard/ClientProcess.h>

#include <QFile>

#include <xcb/res.h>

#include <utility>

namespace tulvane {

namespace {

constexpr int longestAncestry = 64;

pid_t windowsProcess(X11Connection& link, xcb_window_t window)
{
    xcb_connection_t* const connection = link.connection();
    const auto* extension = xcb_get_extension_data(connection, &xcb_res_id);
    if (extension == nullptr || extension->present == 0)
        return 0;
    const xcb_res_client_id_spec_t asked{window, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    const XcbReply<xcb_res_query_client_ids_reply_t> reply(
        xcb_res_query_client_ids_reply(connection, xcb_res_query_client_ids(connection, 1, &asked), nullptr));
    if (!reply)
        return 0;
    for (auto ids = xcb_res_query_client_ids_ids_iterator(reply.get()); ids.rem > 0;
         xcb_res_client_id_value_next(&ids)) {
        if ((ids.data->spec.mask & XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID) != 0 &&
            xcb_res_client_id_value_value_length(ids.data) == 1)
            return static_cast<pid_t>(*xcb_res_client_id_value_value(ids.data));
    }
    return 0;
}

/// The parent and the group of a process; zeroes where there is no such process.
std::pair<pid_t, pid_t> parentAndGroup(pid_t process)
{
    QFile file(QStringLiteral("/proc/%1/stat").arg(process));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray stat = file.readAll();
    // The name in brackets may have blanks and brackets in it; then come the state, the parent and the group.
    const QList<QByteArray> fields = stat.mid(stat.lastIndexOf(')') + 2).split(' ');
    return fields.size() < 3 ? std::pair<pid_t, pid_t>() : std::pair(fields[1].toInt(), fields[2].toInt());
}

} // namespace

ClientProcess ClientProcess::ofWindow(X11Connection& link, xcb_window_t window)
{
    ClientProcess client;
    client.id = window == noWindow ? 0 : windowsProcess(link, window);
    if (client.id == 0)
        return client;
    auto [parent, group] = parentAndGroup(client.id);
    client.group = group;
    while (parent > 1 && client.ancestors.size() < longestAncestry) {
        client.ancestors.append(parent);
        parent = parentAndGroup(parent).first;
    }
    return client;
}

bool ClientProcess::belongsTo(const ClientProcess& program) const
{
    if (id == 0 || program.id == 0)
        return false;
    return id == program.id || group == program.id || ancestors.contains(program.id);
}

} // namespace tulvane
