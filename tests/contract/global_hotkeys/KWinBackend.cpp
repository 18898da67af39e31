#include "HotkeysBackend.h"

#include <platform/linux/desktop/LastingBus.h>
#include <platform/linux/kde/KGlobalAccelHotKeys.h>
#include <platform/linux/kde/QtKeys.h>
#include <ports/KeyModifiers.h>
#include <ports/VirtualKeys.h>
#include <support/Await.h>
#include <support/wayland/WaylandDesktop.h>

#include <QDBusMessage>
#include <QFile>

#include <array>

namespace tulvane::test {

namespace {

struct Modifier {
    quint32 carbon;
    int evdev;
};
constexpr std::array modifiers{Modifier{carbon::shift, 42}, Modifier{carbon::control, 29},
                               Modifier{carbon::option, 56}, Modifier{carbon::command, 125}};
const KGlobalAccel::Action elsewhere{QStringLiteral("elsewhere"), QStringLiteral("act"),
                                     QStringLiteral("Elsewhere"), QStringLiteral("Act")};

QList<int> modifierKeys(const KeyCombination& combination)
{
    QList<int> keys;
    for (const auto& [carbon, evdev] : modifiers) {
        if ((combination.modifiers & carbon) != 0)
            keys.append(evdev);
    }
    return keys;
}

int keyOf(const KeyCombination& combination)
{
    return virtualKeys::byCode(combination.keyCode)->evdev;
}

/// One desktop for the whole suite.
WaylandDesktop& desktop()
{
    static WaylandDesktop one(WaylandDesktop::Kind::kwin, {.layout = QStringLiteral("us")});
    return one;
}

QDBusConnection connection()
{
    return QDBusConnection::connectToBus(desktop().bus(), QStringLiteral("hotkeys"));
}

class KWinBackend final : public HotkeysBackend {
public:
    KWinBackend() { m_hotkeys = std::make_unique<KGlobalAccelHotKeys>(options()); }
    KWinBackend(const KWinBackend&) = delete;
    KWinBackend& operator=(const KWinBackend&) = delete;
    ~KWinBackend() override
    {
        m_hotkeys.reset();
        // What the service remembers of one test is nothing for the next one.
        freeElsewhere({});
        for (const char* action : {"hotkey-1", "hotkey-2", "hotkey-99"})
            forget(QStringLiteral("com.dunio.Tulvane"), QString::fromUtf8(action));
        setLayout(QStringLiteral("us"));
    }

    GlobalHotkeys& hotkeys() override { return *m_hotkeys; }
    void press(const KeyCombination& combination) override
    {
        desktop().down(modifierKeys(combination) + QList{keyOf(combination)});
    }
    void release(const KeyCombination& combination) override
    {
        desktop().up(QList{keyOf(combination)} + modifierKeys(combination));
    }
    void releaseModifiersFirst(const KeyCombination& combination) override
    {
        desktop().up(modifierKeys(combination) + QList{keyOf(combination)});
    }
    void awaitRepeats(const KeyCombination&, const std::function<int()>& seen, int count) override
    {
        ASSERT_TRUE(waitUntil([&] { return seen() >= count; })) << seen() << " repeats";
    }
    void takeElsewhere(const KeyCombination& combination) override
    {
        const auto keys = qtKeysOf(combination, *XkbKeymap::fromNames(QStringLiteral("us")));
        ASSERT_FALSE(m_service.add(elsewhere).isEmpty());
        ASSERT_EQ(m_service.setKeys(elsewhere, keys, KGlobalAccel::Keys::asGiven), keys);
    }
    void freeElsewhere(const KeyCombination&) override { forget(elsewhere.component, elsewhere.name); }
    void changeKeyboard() override { setLayout(QStringLiteral("no")); }
    void end() override { m_hotkeys.reset(); }
    QString elsewhereTitle() const override { return elsewhere.componentTitle; }

private:
    static KGlobalAccelHotKeys::Options options()
    {
        return {std::make_shared<LastingBus>(desktop().bus()),
                desktop().variable(QStringLiteral("XDG_CONFIG_HOME"))};
    }
    static void forget(const QString& component, const QString& action)
    {
        auto call = QDBusMessage::createMethodCall(KGlobalAccel::service, KGlobalAccel::path,
                                                   KGlobalAccel::interface, QStringLiteral("unregister"));
        call.setArguments({component, action});
        connection().call(call);
    }
    static void setLayout(const QString& name)
    {
        QFile file(desktop().variable(QStringLiteral("XDG_CONFIG_HOME")) + QStringLiteral("/kxkbrc"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("[Layout]\nLayoutList=" + name.toUtf8() + "\nUse=true\n");
        file.close();
        connection().send(QDBusMessage::createSignal(
            QStringLiteral("/Layouts"), QStringLiteral("org.kde.keyboard"), QStringLiteral("reloadConfig")));
    }

    KGlobalAccel m_service{std::make_shared<LastingBus>(desktop().bus())};
    std::unique_ptr<KGlobalAccelHotKeys> m_hotkeys;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(KWin, GlobalHotkeysContract,
                         testing::Values(BackendFactory{
                             "KWin", [] { return std::make_unique<KWinBackend>(); },
                             [] { return WaylandDesktop::missing(WaylandDesktop::Kind::kwin); }}));

} // namespace tulvane::test
