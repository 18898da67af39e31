#include <platform/linux/x11/clipboard/SelectionOwner.h>
#include <platform/linux/x11/connection/X11Connection.h>

#include <QMetaObject>

#include <map>

namespace tulvane {

struct SelectionOwner::Parts {
    struct Kept {
        xcb_window_t window;
        std::unique_ptr<SelectionResponder> offers;
    };

    std::unique_ptr<X11Connection> link;
    std::map<xcb_atom_t, Kept> kept;
};

SelectionOwner::SelectionOwner()
{
    m_thread.setObjectName(QStringLiteral("tulvane-selections"));
    m_there.moveToThread(&m_thread);
    m_thread.start();
}

std::unique_ptr<SelectionOwner> SelectionOwner::start(const QByteArray& display)
{
    std::unique_ptr<SelectionOwner> keeper(new SelectionOwner);
    keeper->inThread([&] {
        keeper->m_parts = std::make_unique<Parts>();
        keeper->m_parts->link = X11Connection::open(display);
    });
    return keeper->m_parts->link ? std::move(keeper) : nullptr;
}

SelectionOwner::~SelectionOwner()
{
    inThread([this] {
        if (m_parts)
            m_parts->kept.clear();
        m_parts.reset();
    });
    m_thread.quit();
    m_thread.wait();
}

void SelectionOwner::inThread(const std::function<void()>& work)
{
    QMetaObject::invokeMethod(&m_there, work, Qt::BlockingQueuedConnection);
}

xcb_window_t SelectionOwner::keep(xcb_atom_t selection, TextRead textRead)
{
    xcb_window_t window = noWindow;
    inThread([&] {
        window = m_parts->link->makeHiddenWindow();
        m_parts->kept[selection] = {window, std::make_unique<SelectionResponder>(
                                                *m_parts->link, window, selection, std::move(textRead))};
        // The window is named in requests of the main thread's own connection from now on.
        m_parts->link->catchUp();
    });
    return window;
}

void SelectionOwner::take(xcb_atom_t selection, const QList<TargetOffer>& offers, xcb_timestamp_t time,
                          quint64 number)
{
    inThread([&] {
        X11Connection& link = *m_parts->link;
        const Parts::Kept& kept = m_parts->kept.at(selection);
        kept.offers->set(offers, time, number);
        xcb_set_selection_owner(link.connection(), kept.window, selection, time);
        link.catchUp();
    });
}

void SelectionOwner::drop(xcb_atom_t selection)
{
    inThread([&] { m_parts->kept.at(selection).offers->drop(); });
}

void SelectionOwner::forget(xcb_atom_t selection)
{
    inThread([&] {
        const auto found = m_parts->kept.find(selection);
        if (found == m_parts->kept.end())
            return;
        xcb_destroy_window(m_parts->link->connection(), found->second.window);
        m_parts->kept.erase(found);
        m_parts->link->flush();
    });
}

} // namespace tulvane
