// Says each edge of a modifier key: its code, and what is held then. Ends by itself.
#include <platform/linux/evdev/EvdevModifierEvents.h>
#include <platform/linux/evdev/KeyboardAccess.h>

#include <QCoreApplication>
#include <QTimer>

#include <cstdio>

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    std::fprintf(stderr, "access %d\n", static_cast<int>(tulvane::keyboardAccess()));
    tulvane::EvdevModifierEvents events;
    const auto tap = events.createTap(62, [](const tulvane::ModifierEvent& event) {
        std::printf("%lld %llx\n", static_cast<long long>(event.keyCode),
                    static_cast<unsigned long long>(event.flags));
        std::fflush(stdout);
    });
    if (!tap) {
        std::printf("%s\n", qPrintable(tap.error().description()));
        return 1;
    }
    (*tap)->enable();
    QTimer::singleShot(std::chrono::milliseconds(2500), &app, &QCoreApplication::quit);
    return QCoreApplication::exec();
}
