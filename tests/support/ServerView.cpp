#include <support/ServerView.h>

#include <xcb/shape.h>

#include <cstdlib>
#include <memory>
#include <stdexcept>

namespace tulvane::test {

namespace {

struct Freed {
    void operator()(void* memory) const { std::free(memory); }
};

/// The answer of the server, which must give one.
template <class T>
std::unique_ptr<T, Freed> answer(T* reply)
{
    if (!reply)
        throw std::runtime_error("the X server refused");
    return std::unique_ptr<T, Freed>(reply);
}

} // namespace

ServerView::ServerView(const QString& display)
    : m_connection(xcb_connect(display.toLocal8Bit().constData(), nullptr))
{
    if (xcb_connection_has_error(m_connection) != 0)
        throw std::runtime_error("there is no such X server");
    m_screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data;
}

ServerView::~ServerView()
{
    xcb_disconnect(m_connection);
}

xcb_atom_t ServerView::atom(const QString& name) const
{
    const QByteArray text = name.toLatin1();
    const auto cookie = xcb_intern_atom(m_connection, 0, static_cast<quint16>(text.size()), text.constData());
    return answer(xcb_intern_atom_reply(m_connection, cookie, nullptr))->atom;
}

QList<xcb_window_t> ServerView::stack() const
{
    const auto tree =
        answer(xcb_query_tree_reply(m_connection, xcb_query_tree(m_connection, root()), nullptr));
    QList<xcb_window_t> visible;
    for (int i = 0; i < xcb_query_tree_children_length(tree.get()); ++i) {
        const xcb_window_t window = xcb_query_tree_children(tree.get())[i];
        if (isViewable(window))
            visible.append(window);
    }
    return visible;
}

xcb_window_t ServerView::topLevel(xcb_window_t window) const
{
    while (true) {
        const auto tree =
            answer(xcb_query_tree_reply(m_connection, xcb_query_tree(m_connection, window), nullptr));
        if (tree->parent == root())
            return window;
        window = tree->parent;
    }
}

std::optional<xcb_window_t> ServerView::unmanaged(QSize size) const
{
    for (const xcb_window_t window : stack()) {
        if (isUnmanaged(window) && place(window).size() == size)
            return window;
    }
    return std::nullopt;
}

bool ServerView::isViewable(xcb_window_t window) const
{
    // A window can go while it is asked about; then it cannot be seen.
    const std::unique_ptr<xcb_get_window_attributes_reply_t, Freed> reply(xcb_get_window_attributes_reply(
        m_connection, xcb_get_window_attributes(m_connection, window), nullptr));
    return reply && reply->map_state == XCB_MAP_STATE_VIEWABLE &&
           reply->_class == XCB_WINDOW_CLASS_INPUT_OUTPUT;
}

bool ServerView::isUnmanaged(xcb_window_t window) const
{
    const std::unique_ptr<xcb_get_window_attributes_reply_t, Freed> reply(xcb_get_window_attributes_reply(
        m_connection, xcb_get_window_attributes(m_connection, window), nullptr));
    return reply && reply->override_redirect != 0;
}

QRect ServerView::place(xcb_window_t window) const
{
    const auto geometry =
        answer(xcb_get_geometry_reply(m_connection, xcb_get_geometry(m_connection, window), nullptr));
    const auto moved = answer(xcb_translate_coordinates_reply(
        m_connection, xcb_translate_coordinates(m_connection, window, root(), 0, 0), nullptr));
    return {moved->dst_x, moved->dst_y, geometry->width, geometry->height};
}

int ServerView::depth(xcb_window_t window) const
{
    return answer(xcb_get_geometry_reply(m_connection, xcb_get_geometry(m_connection, window), nullptr))
        ->depth;
}

QList<QRect> ServerView::shape(xcb_window_t window, quint8 kind) const
{
    const auto reply = answer(xcb_shape_get_rectangles_reply(
        m_connection, xcb_shape_get_rectangles(m_connection, window, kind), nullptr));
    QList<QRect> rects;
    for (int i = 0; i < xcb_shape_get_rectangles_rectangles_length(reply.get()); ++i) {
        const auto& one = xcb_shape_get_rectangles_rectangles(reply.get())[i];
        rects.append({one.x, one.y, one.width, one.height});
    }
    return rects;
}

QList<QRect> ServerView::inputShape(xcb_window_t window) const
{
    return shape(window, XCB_SHAPE_SK_INPUT);
}

QList<QRect> ServerView::boundingShape(xcb_window_t window) const
{
    return shape(window, XCB_SHAPE_SK_BOUNDING);
}

QList<quint32> ServerView::numbers(xcb_window_t window, const char* property) const
{
    const auto cookie = xcb_get_property(m_connection, 0, window, atom(QString::fromLatin1(property)),
                                         XCB_GET_PROPERTY_TYPE_ANY, 0, 64);
    const auto reply = answer(xcb_get_property_reply(m_connection, cookie, nullptr));
    if (reply->format != 32)
        return {};
    const auto* const items = static_cast<const quint32*>(xcb_get_property_value(reply.get()));
    return QList<quint32>(items, items + xcb_get_property_value_length(reply.get()) / 4);
}

QStringList ServerView::atoms(xcb_window_t window, const char* property) const
{
    QStringList names;
    for (const quint32 number : numbers(window, property)) {
        const auto name =
            answer(xcb_get_atom_name_reply(m_connection, xcb_get_atom_name(m_connection, number), nullptr));
        names.append(QString::fromLatin1(xcb_get_atom_name_name(name.get()),
                                         xcb_get_atom_name_name_length(name.get())));
    }
    return names;
}

xcb_window_t ServerView::focus() const
{
    return answer(xcb_get_input_focus_reply(m_connection, xcb_get_input_focus(m_connection), nullptr))->focus;
}

ScreenPicture ServerView::picture() const
{
    const auto cookie = xcb_get_image(m_connection, XCB_IMAGE_FORMAT_Z_PIXMAP, root(), 0, 0,
                                      m_screen->width_in_pixels, m_screen->height_in_pixels, ~0U);
    const auto image = answer(xcb_get_image_reply(m_connection, cookie, nullptr));
    const auto* const pixels = reinterpret_cast<const quint32*>(xcb_get_image_data(image.get()));
    return {m_screen->width_in_pixels, {pixels, pixels + xcb_get_image_data_length(image.get()) / 4}};
}

xcb_window_t ServerView::show(const Looks& looks)
{
    const xcb_window_t window = xcb_generate_id(m_connection);
    const quint32 values[] = {looks.color, looks.isUnmanaged ? 1U : 0U, XCB_EVENT_MASK_BUTTON_PRESS};
    xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, window, root(),
                      static_cast<qint16>(looks.place.x()), static_cast<qint16>(looks.place.y()),
                      static_cast<quint16>(looks.place.width()), static_cast<quint16>(looks.place.height()),
                      0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values);
    if (looks.isFullScreen) {
        const xcb_atom_t state = atom(QStringLiteral("_NET_WM_STATE_FULLSCREEN"));
        xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, window,
                            atom(QStringLiteral("_NET_WM_STATE")), XCB_ATOM_ATOM, 32, 1, &state);
    }
    xcb_map_window(m_connection, window);
    xcb_flush(m_connection);
    return window;
}

void ServerView::raise(xcb_window_t window) const
{
    const quint32 above = XCB_STACK_MODE_ABOVE;
    xcb_configure_window(m_connection, window, XCB_CONFIG_WINDOW_STACK_MODE, &above);
    xcb_flush(m_connection);
}

void ServerView::destroy(xcb_window_t window) const
{
    xcb_destroy_window(m_connection, window);
    xcb_flush(m_connection);
}

void ServerView::readEvents()
{
    xcb_flush(m_connection);
    while (const std::unique_ptr<xcb_generic_event_t, Freed> event{xcb_poll_for_event(m_connection)}) {
        if (event->response_type == XCB_BUTTON_PRESS)
            m_clicked.append(reinterpret_cast<const xcb_button_press_event_t*>(event.get())->event);
        else if (event->response_type == XCB_UNMAP_NOTIFY)
            m_gone.append(reinterpret_cast<const xcb_unmap_notify_event_t*>(event.get())->window);
    }
}

int ServerView::clicks(xcb_window_t window)
{
    readEvents();
    const auto count = static_cast<int>(m_clicked.removeAll(window));
    return count;
}

void ServerView::watch(xcb_window_t window)
{
    const quint32 events = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(m_connection, window, XCB_CW_EVENT_MASK, &events);
    xcb_flush(m_connection);
}

int ServerView::disappearances(xcb_window_t window)
{
    readEvents();
    return static_cast<int>(m_gone.count(window));
}

void ServerView::own(const QString& selection, bool owned)
{
    if (m_owner == 0)
        m_owner = show({.place = {-50, -50, 1, 1}, .isUnmanaged = true});
    xcb_set_selection_owner(m_connection, owned ? m_owner : xcb_window_t{XCB_WINDOW_NONE}, atom(selection),
                            XCB_CURRENT_TIME);
    // The round trip of this question makes sure that it has happened.
    static_cast<void>(focus());
}

xcb_window_t ServerView::owner(const QString& selection) const
{
    const auto cookie = xcb_get_selection_owner(m_connection, atom(selection));
    return answer(xcb_get_selection_owner_reply(m_connection, cookie, nullptr))->owner;
}

} // namespace tulvane::test
