#include <support/threads/Handover.h>

#include <QDeadlineTimer>
#include <QMetaObject>
#include <QRunnable>
#include <QThread>
#include <QThreadPool>

#include <dlfcn.h>
#include <sanitizer/tsan_interface.h>

#include <atomic>
#include <functional>
#include <utility>

// The functions of Qt below stand before Qt's own, which they call. A thread stands for its event queue: Qt
// guards each queue by a lock, so whatever a thread did before it posted happens before the events that the
// receiver takes out afterwards.

namespace {

template <class Function>
Function original(const char* name)
{
    void* const found = ::dlsym(RTLD_NEXT, name);
    if (found == nullptr)
        qFatal("this Qt has no %s", name);
    return reinterpret_cast<Function>(found);
}

/// A function on its way to the receiver's thread. Two threads may hold it; who lets go of it last destroys
/// it.
class WatchedSlot final : public QtPrivate::QSlotObjectBase {
public:
    explicit WatchedSlot(QtPrivate::QSlotObjectBase* inner)
        : QSlotObjectBase(&WatchedSlot::act),
          m_inner(inner)
    {
    }

private:
    static void act(int what, QSlotObjectBase* slot, QObject* receiver, void** arguments, bool* /*same*/)
    {
        __tsan_acquire(slot);
        auto* const self = static_cast<WatchedSlot*>(slot);
        if (what == Call) {
            self->m_inner->call(receiver, arguments);
            __tsan_release(slot);
        } else if (what == Destroy) {
            self->m_inner->destroyIfLastRef();
            delete self;
        }
    }

    QtPrivate::QSlotObjectBase* m_inner;
};

// Stands for the queues of all pools: what a worker runs may be read only after it is taken over.
char pools;

// Signals that are being sent from another thread than their sender's, to which Qt posts them. Qt copies
// their arguments on the way, so they are handed over only after that, and a receiver waits. Relaxed: it
// orders nothing itself.
std::atomic<int> postings = 0;

/// Who receives a signal is not known: it lives in the sender's thread or in the main thread.
void handOver(QThread* sendersThread)
{
    __tsan_release(sendersThread);
    if (const QCoreApplication* const application = QCoreApplication::instance())
        __tsan_release(application->thread());
}

} // namespace

bool QMetaObject::invokeMethodImpl(QObject* object, QtPrivate::QSlotObjectBase* slot, Qt::ConnectionType type,
                                   void* result)
{
    using Call = bool (*)(QObject*, QtPrivate::QSlotObjectBase*, Qt::ConnectionType, void*);
    static const auto call = original<Call>(
        "_ZN11QMetaObject16invokeMethodImplEP7QObjectPN9QtPrivate15QSlotObjectBaseEN2Qt14ConnectionTypeEPv");
    auto* const watched = new WatchedSlot(slot);
    __tsan_release(watched);
    const bool called = call(object, watched, type, result);
    if (type == Qt::BlockingQueuedConnection)
        __tsan_acquire(object);
    return called;
}

void QMetaObject::activate(QObject* sender, const QMetaObject* type, int signal, void** arguments)
{
    using Call = void (*)(QObject*, const QMetaObject*, int, void**);
    static const auto call = original<Call>("_ZN11QMetaObject8activateEP7QObjectPKS_iPPv");
    QThread* const thread = sender->thread();
    const bool isForeign = QThread::currentThread() != thread;
    postings.fetch_add(isForeign ? 1 : 0, std::memory_order_relaxed);
    if (!isForeign)
        handOver(thread);
    call(sender, type, signal, arguments);
    if (isForeign)
        handOver(thread);
    postings.fetch_sub(isForeign ? 1 : 0, std::memory_order_relaxed);
}

void QThreadPool::start(std::function<void()> work, int priority)
{
    QRunnable* const watched = QRunnable::create([work = std::move(work)]() mutable {
        __tsan_acquire(&pools);
        work();
        work = nullptr; // what it holds goes before its end is seen
        __tsan_release(&pools);
    });
    __tsan_release(&pools);
    start(watched, priority);
}

bool QThreadPool::waitForDone(int milliseconds)
{
    using Call = bool (*)(QThreadPool*, int);
    static const auto call = original<Call>("_ZN11QThreadPool11waitForDoneEi");
    const bool done = call(this, milliseconds);
    if (done)
        __tsan_acquire(&pools);
    return done;
}

bool QThread::wait(QDeadlineTimer deadline)
{
    using Call = bool (*)(QThread*, QDeadlineTimer);
    static const auto call = original<Call>("_ZN7QThread4waitE14QDeadlineTimer");
    const bool ended = call(this, deadline);
    if (ended)
        __tsan_acquire(this);
    return ended;
}

namespace tulvane::test {

bool HandoverApplication::notify(QObject* receiver, QEvent* event)
{
    QThread* const thread = QThread::currentThread();
    while (postings.load(std::memory_order_relaxed) != 0)
        QThread::yieldCurrentThread();
    __tsan_acquire(thread);
    const bool handled = QCoreApplication::notify(receiver, event);
    __tsan_release(receiver); // for one who waits until it is handled
    __tsan_release(thread);   // for one who waits for the thread's end
    return handled;
}

} // namespace tulvane::test
