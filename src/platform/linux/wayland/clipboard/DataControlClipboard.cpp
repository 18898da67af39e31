#include <base/Log.h>
#include <platform/linux/wayland/clipboard/DataControlClipboard.h>
#include <platform/linux/wayland/clipboard/DataControlDevice.h>

#include <QMetaObject>

#include <csignal>
#include <map>

namespace tulvane {

struct DataControlClipboard::Parts {
    explicit Parts(std::unique_ptr<WaylandConnection> opened)
        : connection(std::move(opened)),
          manager(DataControlProtocol::bind(*connection))
    {
        QObject::connect(connection.get(), &WaylandConnection::appeared, connection.get(), [this] { sit(); });
    }
    Parts(const Parts&) = delete;
    Parts& operator=(const Parts&) = delete;
    ~Parts()
    {
        selections.clear();
        device.reset();
        if (manager.object)
            zwlr_data_control_manager_v1_destroy(manager.object);
        connection->flush();
    }

    void add(PasteSelection which, const Activity& activity)
    {
        selections.try_emplace(
            which, DataControlSelection::Ports{*connection, manager.object, scheduler,
                                               [this, which](zwlr_data_control_source_v1* source) {
                                                   if (device)
                                                       device->take(which, source);
                                                   return device != nullptr;
                                               },
                                               [activity, which] { activity(which); }});
    }
    void tell(PasteSelection which, std::shared_ptr<DataControlOffer> offer)
    {
        const auto found = selections.find(which);
        if (found != selections.end())
            found->second.ownerChanged(std::move(offer));
    }

    /// Takes a seat where there is one and we have none.
    void sit()
    {
        wl_seat* const seat = device ? nullptr : connection->seat();
        if (!seat)
            return;
        device = std::make_unique<DataControlDevice>(
            seat, manager,
            DataControlDevice::Handlers{
                .ownerChanged =
                    [this](PasteSelection which, std::shared_ptr<DataControlOffer> offer) {
                        tell(which, std::move(offer));
                    },
                .finished = [this] { stand(); }});
        connection->flush();
    }
    /// The seat has gone, and what was selected there with it.
    void stand()
    {
        qCInfo(lcInsertion, "The seat has gone, and its selections with it");
        device.reset();
        connection->dropSeat();
        for (auto& [which, selection] : selections)
            selection.ownerChanged(nullptr);
        sit();
    }

    std::unique_ptr<WaylandConnection> connection;
    EventLoopScheduler scheduler;
    DataControlProtocol::Manager manager;
    std::unique_ptr<DataControlDevice> device;
    std::map<PasteSelection, DataControlSelection> selections;
};

DataControlClipboard::DataControlClipboard(Activity activity) : m_activity(std::move(activity))
{
    m_thread.setObjectName(QStringLiteral("tulvane-selections"));
    m_there.moveToThread(&m_thread);
    m_thread.start();
}

std::unique_ptr<DataControlClipboard> DataControlClipboard::start(const QByteArray& socket, Activity activity)
{
    std::unique_ptr<DataControlClipboard> clipboard(new DataControlClipboard(std::move(activity)));
    bool isOpen = false;
    clipboard->inThread([&] { isOpen = clipboard->open(socket); });
    return isOpen ? std::move(clipboard) : nullptr;
}

DataControlClipboard::~DataControlClipboard()
{
    inThread([this] { m_parts.reset(); });
    m_thread.quit();
    m_thread.wait();
}

bool DataControlClipboard::open(const QByteArray& socket)
{
    // A reader that goes away in the middle ends a write, not the program.
    sigset_t brokenPipe;
    sigemptyset(&brokenPipe);
    sigaddset(&brokenPipe, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &brokenPipe, nullptr);
    auto connection = WaylandConnection::open(socket);
    if (!connection || !DataControlProtocol::isOffered(*connection) || !connection->seat())
        return false;
    m_compositor = static_cast<quint32>(connection->compositorProcess());
    m_parts = std::make_unique<Parts>(std::move(connection));
    m_parts->add(PasteSelection::clipboard, m_activity);
    if (m_parts->manager.hasPrimary)
        m_parts->add(PasteSelection::primary, m_activity);
    m_parts->sit();
    m_parts->connection->catchUp();
    return true;
}

DataControlSelection* DataControlClipboard::find(PasteSelection which)
{
    const auto found = m_parts->selections.find(which);
    return found == m_parts->selections.end() ? nullptr : &found->second;
}

void DataControlClipboard::inThread(const std::function<void()>& work)
{
    QMetaObject::invokeMethod(&m_there, work, Qt::BlockingQueuedConnection);
}

} // namespace tulvane
