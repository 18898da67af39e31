#include "HotkeysBackend.h"

#include <platform/linux/sway/SwayHotkeys.h>
#include <platform/linux/wayland/keyboard/WaylandKeymap.h>
#include <ports/KeyModifiers.h>
#include <ports/VirtualKeys.h>
#include <support/Await.h>
#include <support/wayland/WaylandDesktop.h>

#include <QFile>

#include <array>

namespace tulvane::test {

namespace {

struct SwayModifier {
    quint32 carbon;
    int evdev;
    const char* name;
};
constexpr std::array swayModifiers{
    SwayModifier{carbon::shift, 42, "Shift"}, SwayModifier{carbon::control, 29, "Ctrl"},
    SwayModifier{carbon::option, 56, "Mod1"}, SwayModifier{carbon::command, 125, "Mod4"}};

QList<int> swayModifierKeys(const KeyCombination& combination)
{
    QList<int> keys;
    for (const SwayModifier& modifier : swayModifiers) {
        if ((combination.modifiers & modifier.carbon) != 0)
            keys.append(modifier.evdev);
    }
    return keys;
}

int swayKey(const KeyCombination& combination)
{
    return virtualKeys::byCode(combination.keyCode)->evdev;
}

/// One desktop for the whole suite.
WaylandDesktop& sway()
{
    static WaylandDesktop one(WaylandDesktop::Kind::sway);
    return one;
}

class SwayBackend final : public HotkeysBackend {
public:
    SwayBackend() { m_hotkeys = std::make_unique<SwayHotkeys>(m_connection, layout()); }
    SwayBackend(const SwayBackend&) = delete;
    SwayBackend& operator=(const SwayBackend&) = delete;
    ~SwayBackend() override
    {
        m_hotkeys.reset();
        if (!m_before.isEmpty())
            freeElsewhere({});
    }

    GlobalHotkeys& hotkeys() override { return *m_hotkeys; }
    void press(const KeyCombination& combination) override
    {
        sway().down(swayModifierKeys(combination) + QList{swayKey(combination)});
    }
    void release(const KeyCombination& combination) override
    {
        sway().up(QList{swayKey(combination)} + swayModifierKeys(combination));
    }
    void releaseModifiersFirst(const KeyCombination& combination) override
    {
        sway().up(swayModifierKeys(combination) + QList{swayKey(combination)});
    }
    /// Sway is asked for no repeats: a press that comes while another waits for its release means something.
    void awaitRepeats(const KeyCombination&, const std::function<int()>&, int) override
    {
        runEventLoopFor(std::chrono::milliseconds(900));
    }
    void takeElsewhere(const KeyCombination& combination) override
    {
        QByteArray keys;
        for (const SwayModifier& modifier : swayModifiers) {
            if ((combination.modifiers & modifier.carbon) != 0)
                keys += QByteArray(modifier.name) + '+';
        }
        m_before = read();
        write(m_before + "\nset $held " + keys + "space\nbindsym --no-warn $held exec true\n");
    }
    void freeElsewhere(const KeyCombination&) override { write(std::exchange(m_before, {})); }
    void changeKeyboard() override { reload(); }
    void end() override { m_hotkeys.reset(); }
    QString elsewhereTitle() const override { return QStringLiteral("exec true"); }

private:
    static QString configuration()
    {
        return sway().variable(QStringLiteral("XDG_CONFIG_HOME")) + QStringLiteral("/sway/config");
    }
    static QByteArray read()
    {
        QFile file(configuration());
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }
    void write(const QByteArray& text)
    {
        QFile file(configuration());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        file.close();
        reload();
    }
    /// Returns when the hotkeys have received the notice of it.
    void reload()
    {
        int notices = 0;
        const QObject here;
        QObject::connect(m_connection.get(), &SwayConnection::happened, &here,
                         [&](SwayConnection::Event event, const QJsonObject& about) {
                             if (event == SwayConnection::Event::workspace &&
                                 about[QStringLiteral("change")].toString() == u"reload")
                                 ++notices;
                         });
        ASSERT_TRUE(m_connection->run(QStringLiteral("reload")));
        ASSERT_TRUE(waitUntil([&] { return notices > 0; }));
    }
    SwayHotkeys::Layout layout()
    {
        return {.labelOf = [this](const VirtualKey& key) { return m_keymap.label(key); },
                .keyOf = [this](const QString& keysym) { return m_keymap.keyForKeysym(keysym); },
                .combinationOf = [this](const NativeKey& key) { return m_keymap.combination(key); },
                .setChangeHandler = [](const std::function<void()>&) {}};
    }

    std::shared_ptr<SwayConnection> m_connection =
        SwayConnection::open(sway().variable(QStringLiteral("SWAYSOCK")).toLocal8Bit());
    WaylandKeymap m_keymap{WaylandConnection::open(WaylandConnection::socketOf(sway().environment()))};
    QByteArray m_before;
    std::unique_ptr<SwayHotkeys> m_hotkeys;
};

/// The edges that were told, as "down" and "up".
QStringList edgesOf(SwayBackend& backend, const std::function<void()>& meanwhile)
{
    QStringList edges;
    backend.hotkeys().setEventHandler([&](const HotkeyEvent& event) {
        edges.append(event.kind == HotkeyEventKind::pressed ? QStringLiteral("down") : QStringLiteral("up"));
        return HotkeyDelivery::handled;
    });
    meanwhile();
    runEventLoopFor(std::chrono::milliseconds(150));
    backend.hotkeys().setEventHandler({});
    return edges;
}

constexpr KeyCombination altSpaceOnSway{49, carbon::option};
constexpr HotkeyId swayId{0x41424344, 1};

} // namespace

TEST(SwayHotkeys, APressWhoseReleaseSwayKeptBackIsEndedByTheNextPress)
{
    TULVANE_NEEDS(WaylandDesktop::Kind::sway);
    SwayBackend backend;
    const auto token = backend.hotkeys().registerHotkey(swayId, altSpaceOnSway);
    ASSERT_TRUE(token);
    constexpr int anotherKey = 30;
    const QStringList first = edgesOf(backend, [&] {
        backend.press(altSpaceOnSway);
        sway().press({anotherKey});
        backend.release(altSpaceOnSway);
    });
    EXPECT_EQ(first, QStringList{QStringLiteral("down")});
    const auto tap = [&] {
        backend.press(altSpaceOnSway);
        backend.release(altSpaceOnSway);
    };
    EXPECT_EQ(edgesOf(backend, tap), QStringList{QStringLiteral("up")});
    EXPECT_EQ(edgesOf(backend, tap), QStringList({QStringLiteral("down"), QStringLiteral("up")}));
}

TEST(SwayHotkeys, TheyAreThereAgainAfterSwayHasReadItsConfigurationAnew)
{
    TULVANE_NEEDS(WaylandDesktop::Kind::sway);
    SwayBackend backend;
    const auto token = backend.hotkeys().registerHotkey(swayId, altSpaceOnSway);
    ASSERT_TRUE(token);
    backend.changeKeyboard();
    const QStringList edges = edgesOf(backend, [&] {
        backend.press(altSpaceOnSway);
        backend.release(altSpaceOnSway);
    });
    EXPECT_EQ(edges, QStringList({QStringLiteral("down"), QStringLiteral("up")}));
}

TEST(SwayHotkeys, AProgramThatEndsWhileItsKeyIsHeldDoesNotTakeSwayAlong)
{
    TULVANE_NEEDS(WaylandDesktop::Kind::sway);
    const auto answers = [] {
        return sway().run(QStringLiteral("swaymsg"), {QStringLiteral("-t"), QStringLiteral("get_tree")});
    };
    for (int time = 0; time < 5; ++time) {
        SwayBackend backend;
        const auto token = backend.hotkeys().registerHotkey(swayId, altSpaceOnSway);
        ASSERT_TRUE(token);
        const QStringList edges = edgesOf(backend, [&] { backend.press(altSpaceOnSway); });
        EXPECT_EQ(edges, QStringList{QStringLiteral("down")});
        backend.end();
        EXPECT_FALSE(answers().isEmpty());
        backend.release(altSpaceOnSway);
        EXPECT_FALSE(answers().isEmpty());
    }
}

TEST(SwayHotkeys, AHeldKeyThatIsRegisteredAnewDoesNotEndSway)
{
    TULVANE_NEEDS(WaylandDesktop::Kind::sway);
    SwayBackend backend;
    auto token = backend.hotkeys().registerHotkey(swayId, altSpaceOnSway);
    ASSERT_TRUE(token);
    const QStringList first = edgesOf(backend, [&] { backend.press(altSpaceOnSway); });
    EXPECT_EQ(first, QStringList{QStringLiteral("down")});
    token->reset();
    runEventLoopFor(std::chrono::milliseconds(100)); // what is dropped is unbound later
    token = backend.hotkeys().registerHotkey(swayId, altSpaceOnSway);
    ASSERT_TRUE(token);
    EXPECT_EQ(edgesOf(backend, [&] { backend.release(altSpaceOnSway); }), QStringList{QStringLiteral("up")});
    const QStringList next = edgesOf(backend, [&] {
        backend.press(altSpaceOnSway);
        backend.release(altSpaceOnSway);
    });
    EXPECT_EQ(next, QStringList({QStringLiteral("down"), QStringLiteral("up")}));
}

INSTANTIATE_TEST_SUITE_P(Sway, GlobalHotkeysContract,
                         testing::Values(BackendFactory{
                             "Sway", [] { return std::make_unique<SwayBackend>(); },
                             [] { return WaylandDesktop::missing(WaylandDesktop::Kind::sway); }}));

} // namespace tulvane::test
