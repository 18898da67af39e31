// A program that is the input method's engine until it is ended from outside: it says "engine" once it is.
#include <platform/linux/gnome/IBusCommit.h>

#include <QCoreApplication>
#include <QTimer>

#include <cstdio>

namespace {

QCoro::Task<> hold(tulvane::IBusCommit& commit)
{
    const auto never = []() -> QCoro::Task<bool> {
        static const bool said = [] {
            std::puts("engine");
            std::fflush(stdout);
            return true;
        }();
        co_return !said;
    };
    while (true)
        co_await commit.commit(QStringLiteral("."), never);
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    tulvane::IBusCommit commit(QProcessEnvironment::systemEnvironment());
    QTimer::singleShot(0, [&] { hold(commit); });
    // Its input's end is the user who quits it.
    return QCoreApplication::exec();
}
