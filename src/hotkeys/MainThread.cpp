#include <hotkeys/MainThread.h>

#include <QCoreApplication>
#include <QThread>

namespace tulvane {

void requireMainThread(const char* what)
{
    const QCoreApplication* const application = QCoreApplication::instance();
    if (application != nullptr && application->thread() != QThread::currentThread())
        qFatal("%s was called outside the main thread", what);
}

} // namespace tulvane
