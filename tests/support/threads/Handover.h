#pragma once

#include <QCoreApplication>

namespace tulvane::test {

/// The application of a suite under the thread sanitizer. Qt's libraries are not instrumented, so the
/// sanitizer does not see that an event queue, a thread pool or a thread's end hands over from one thread to
/// another what was written before. This application reports to the sanitizer each event that is posted with
/// `invokeMethod` or by a signal, each piece of work of a pool, and the wait for a thread. What two
/// threads share without such a handover is still reported.
class HandoverApplication final : public QCoreApplication {
public:
    using QCoreApplication::QCoreApplication;
    bool notify(QObject* receiver, QEvent* event) override;
};

} // namespace tulvane::test
