#include <platform/linux/sway/SwayConfig.h>
#include <platform/linux/sway/SwayFront.h>
#include <platform/linux/sway/SwayMessage.h>
#include <ports/KeyModifiers.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tulvane::test {

namespace {

std::optional<quint32> keyOf(const QString& keysym)
{
    const QHash<QString, quint32> keys{{u"space"_qs, 49}, {u"d"_qs, 2}, {u"Return"_qs, 36}};
    return keys.contains(keysym) ? std::optional(keys.value(keysym)) : std::nullopt;
}

} // namespace

TEST(SwayConfig, TellsEachBindingOfTheDefaultModeWithItsCommand)
{
    const QString text =
        QStringLiteral("set $mod Mod4\n"
                       "set $modifier Mod1\n"
                       "# bindsym Mod1+d exec wrong\n"
                       "bindsym $mod+Return exec foot\n"
                       "  bindsym --to-code --no-warn $modifier+Shift+space floating toggle\n"
                       "bindcode Control+40 exec menu\n"
                       "bindsym button2 kill\n"
                       "bindsym Mod1+d+space nop\n"
                       "mode \"resize\" {\n"
                       "    bindsym d resize grow\n"
                       "}\n"
                       "bindsym {\n"
                       "    Ctrl+d exec \\\nlast\n"
                       "}\n");
    using testing::ElementsAre;
    EXPECT_THAT(readSwayBindings(text, keyOf),
                ElementsAre(SymbolicHotkey{true, {36, carbon::command}, u"exec foot"_qs},
                            SymbolicHotkey{true, {49, carbon::option | carbon::shift}, u"floating toggle"_qs},
                            SymbolicHotkey{true, {2, carbon::control}, u"exec menu"_qs},
                            SymbolicHotkey{true, {2, carbon::control}, u"exec last"_qs}));
}

TEST(SwayConfig, NamesTheFilesThatItIncludes)
{
    EXPECT_EQ(swayIncludes(u"a\ninclude ~/x/*.conf \n # include no\n\tinclude /etc/sway/d\n"_qs),
              QStringList({u"~/x/*.conf"_qs, u"/etc/sway/d"_qs}));
}

TEST(SwayMessage, ComesWholeOrNotAtAll)
{
    const QByteArray bytes = SwayMessage{4, "{}"}.bytes() + SwayMessage{0x80000005, "[1]"}.bytes();
    QByteArray come;
    std::vector<SwayMessage> taken;
    for (const char byte : bytes) {
        come.append(byte);
        if (const auto message = SwayMessage::take(come))
            taken.push_back(*message);
    }
    ASSERT_EQ(taken.size(), 2);
    EXPECT_EQ(taken[0].body, "{}");
    EXPECT_EQ(taken[1].type, 0x80000005);
    QByteArray rubbish(40, 'x');
    EXPECT_FALSE(SwayMessage::take(rubbish));
    EXPECT_TRUE(rubbish.isEmpty());
}

TEST(SwayFront, FindsTheFocusedWindowWhereverItLies)
{
    const auto tree =
        QJsonDocument::fromJson(R"({"nodes": [{"nodes": [{"id": 3, "pid": 9, "app_id": "other"}],
        "floating_nodes": [{"id": 5, "pid": 77, "focused": true, "shell": "xwayland", "app_id": null,
                            "window_properties": {"class": "XTerm", "instance": "xterm"}}]}]})");
    const FrontProgram program = SwayFront::inTree(tree.object());
    EXPECT_EQ(program, (FrontProgram{5, {u"XTerm"_qs, u"xterm"_qs}, 77, true}));
    EXPECT_EQ(
        SwayFront::inTree(QJsonDocument::fromJson(R"({"nodes": [{"focused": true, "id": 4}]})").object()),
        FrontProgram());
}

} // namespace tulvane::test
