#include <platform/linux/x11text/SelectionKeeper.h>
#include <platform/linux/x11text/X11Link.h>

#include <QMetaObject>

#include <map>

namespace tulvane {

struct SelectionKeeper::Parts {
    struct Kept {
        xcb_window_t window;
        std::unique_ptr<SelectionOffers> offers;
    };

    std::unique_ptr<X11Link> link;
    std::map<xcb_atom_t, Kept> kept;
};

SelectionKeeper::SelectionKeeper()
{
    m_thread.setObjectName(QStringLiteral("tulvane-selections"));
    m_there.moveToThread(&m_thread);
    m_thread.start();
}

std::unique_ptr<SelectionKeeper> SelectionKeeper::start(const QByteArray& display)
{
    std::unique_ptr<SelectionKeeper> keeper(new SelectionKeeper);
    keeper->inThread([&] {
        keeper->m_parts = std::make_unique<Parts>();
        keeper->m_parts->link = X11Link::open(display);
    });
    return keeper->m_parts->link ? std::move(keeper) : nullptr;
}

SelectionKeeper::~SelectionKeeper()
{
    inThread([this] {
        if (m_parts)
            m_parts->kept.clear();
        m_parts.reset();
    });
    m_thread.quit();
    m_thread.wait();
}

void SelectionKeeper::inThread(const std::function<void()>& work)
{
    QMetaObject::invokeMethod(&m_there, work, Qt::BlockingQueuedConnection);
}

xcb_window_t SelectionKeeper::keep(xcb_atom_t selection, TextRead textRead)
{
    xcb_window_t window = noWindow;
    inThread([&] {
        window = m_parts->link->makeHiddenWindow();
        m_parts->kept[selection] = {window, std::make_unique<SelectionOffers>(
                                                *m_parts->link, window, selection, std::move(textRead))};
        // The window is named in requests of the main thread's own connection from now on.
        m_parts->link->catchUp();
    });
    return window;
}

void SelectionKeeper::take(xcb_atom_t selection, const QList<TargetOffer>& offers, xcb_timestamp_t time,
                           quint64 number)
{
    inThread([&] {
        X11Link& link = *m_parts->link;
        const Parts::Kept& kept = m_parts->kept.at(selection);
        kept.offers->set(offers, time, number);
        xcb_set_selection_owner(link.connection(), kept.window, selection, time);
        link.catchUp();
    });
}

void SelectionKeeper::drop(xcb_atom_t selection)
{
    inThread([&] { m_parts->kept.at(selection).offers->drop(); });
}

void SelectionKeeper::forget(xcb_atom_t selection)
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
