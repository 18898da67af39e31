// What a compositor may do by the letter of the two interfaces, and none that is installed does.
#include "DataControlWorld.h"

#include <support/Signals.h>

#include <ext-data-control-v1-client.h>
#include <gtest/gtest.h>

#include <csignal>

namespace tulvane::test {

namespace {

using Protocol = SelectionCompositor::Protocol;

class CompositorWorld final : public DataControlWorld<SelectionCompositor> {
public:
    explicit CompositorWorld(const SelectionCompositor::Options& options = {}) : DataControlWorld(options) {}
    Pasteboard& primary() { return boards().of(PasteSelection::primary); }
};

QString textOf(Pasteboard& board)
{
    const PasteboardContents contents = await(board.contents());
    return contents.items.size() == 1 ? contents.items.first().plainText().value_or(QString()) : QString();
}

QList<PasteboardItem> items(const QString& text)
{
    return {PasteboardItem::text(text)};
}

void expectSame(const wl_message& one, const wl_message& other)
{
    EXPECT_STREQ(one.name, other.name);
    QByteArray signature(one.signature);
    // The version that it came with.
    while (!signature.isEmpty() && signature.front() >= '0' && signature.front() <= '9')
        signature.remove(0, 1);
    EXPECT_EQ(signature, other.signature) << one.name;
}

void expectSame(const wl_interface& one, const wl_interface& other)
{
    ASSERT_EQ(one.method_count, other.method_count) << other.name;
    ASSERT_EQ(one.event_count, other.event_count) << other.name;
    for (int index = 0; index < one.method_count; ++index)
        expectSame(one.methods[index], other.methods[index]);
    for (int index = 0; index < one.event_count; ++index)
        expectSame(one.events[index], other.events[index]);
}

TEST(DataControlProtocolTest, TheTwoInterfacesDifferInTheirNamesAlone)
{
    expectSame(zwlr_data_control_manager_v1_interface, ext_data_control_manager_v1_interface);
    expectSame(zwlr_data_control_device_v1_interface, ext_data_control_device_v1_interface);
    expectSame(zwlr_data_control_source_v1_interface, ext_data_control_source_v1_interface);
    expectSame(zwlr_data_control_offer_v1_interface, ext_data_control_offer_v1_interface);
}

TEST(DataControlProtocolTest, OfACompositorThatOffersBothTheNewerOneAloneIsUsed)
{
    // The older one has no primary selection here.
    CompositorWorld world({.ours = {Protocol::ext, Protocol::wlr}, .wlrVersion = 1});
    EXPECT_EQ(world.desktop().bindings(Protocol::ext), 2) << "one by each pasteboard of the test";
    EXPECT_EQ(world.desktop().bindings(Protocol::wlr), 0);
    EXPECT_TRUE(world.primary().replace(items(u"selected"_qs)));
    EXPECT_EQ(textOf(world.primary()), u"selected"_qs);
}

TEST(DataControlProtocolTest, AnOldCompositorHasNoPrimarySelectionAndSaysSo)
{
    CompositorWorld world({.ours = {Protocol::wlr}, .wlrVersion = 1});
    EXPECT_TRUE(world.board().replace(items(u"copied"_qs)));
    EXPECT_EQ(world.reader().read(), "copied");
    EXPECT_FALSE(world.primary().replace(items(u"selected"_qs)));
    EXPECT_TRUE(await(world.primary().contents()).items.isEmpty());
    EXPECT_EQ(textOf(world.board()), u"copied"_qs);
}

TEST(DataControlProtocolTest, WithoutEitherThereIsNoPasteboard)
{
    SelectionCompositor compositor({.ours = {}});
    EXPECT_EQ(DataControlPasteboards::open(WaylandConnection::socketOf(compositor.environment()),
                                           std::make_shared<ScriptedFront>(), {}),
              nullptr);
}

TEST(DataControlProtocolTest, WhatWasOfferedIsGivenBack)
{
    CompositorWorld world;
    constexpr int changes = 50;
    for (int change = 0; change < changes; ++change) {
        world.otherWrites(items(QString::number(change)));
        EXPECT_EQ(textOf(world.board()), QString::number(change));
        world.board().replace(items(u"ours"_qs));
    }
    (void)world.board().changeCount();
    // Two pasteboards of this process, one selection each.
    EXPECT_LE(world.desktop().offers(), 2);
}

TEST(DataControlProtocolTest, BothSelectionsMayBeAnnouncedBeforeEitherIsNamed)
{
    CompositorWorld world;
    world.otherWrites(items(u"copied"_qs));
    QProcess& selected = world.desktop().start(u"/usr/bin/wl-copy"_qs, {u"-f"_qs, u"-p"_qs, u"selected"_qs});
    ASSERT_TRUE(waitUntil([&] { return textOf(world.primary()) == u"selected"_qs; }));
    world.desktop().announceBothAtOnce();
    EXPECT_EQ(textOf(world.board()), u"copied"_qs);
    EXPECT_EQ(textOf(world.primary()), u"selected"_qs);
    EXPECT_EQ(selected.state(), QProcess::Running);
}

TEST(DataControlProtocolTest, ASeatThatGoesTakesItsSelectionsWithIt)
{
    CompositorWorld world;
    world.board().replace(items(u"ours"_qs));
    world.otherWrites(items(u"theirs"_qs));
    const qint64 before = world.board().changeCount();
    int activity = 0;
    world.board().setActivityHandler([&] { ++activity; });
    world.desktop().removeSeat();
    EXPECT_GT(world.board().changeCount(), before);
    EXPECT_TRUE(waitUntil([&] { return activity > 0; }));
    EXPECT_TRUE(await(world.board().contents()).items.isEmpty());
    EXPECT_FALSE(world.board().replace(items(u"a"_qs))) << "nothing can be put anywhere";
    EXPECT_FALSE(world.primary().replace(items(u"b"_qs)));
    EXPECT_FALSE(world.board().replaceUnlessChanged({}, world.board().changeCount()));
    EXPECT_EQ(world.desktop().offers(), 0);
}

TEST(DataControlProtocolTest, ASeatThatGoesDuringAReadEndsIt)
{
    CompositorWorld world;
    QProcess& owner = world.desktop().start(u"/usr/bin/wl-copy"_qs, {u"-f"_qs, u"text"_qs});
    ASSERT_TRUE(waitUntil([&] { return textOf(world.board()) == u"text"_qs; }));
    // Two types of which nothing comes would end it after six seconds, as incomplete.
    sendSignal(owner.processId(), SIGSTOP);
    const auto reading = world.board().contents();
    world.desktop().removeSeat();
    const PasteboardContents contents = await(reading);
    sendSignal(owner.processId(), SIGCONT);
    EXPECT_TRUE(contents.items.isEmpty());
    EXPECT_TRUE(contents.complete) << "the read goes on with what there is now: nothing";
}

TEST(DataControlProtocolTest, AnotherSeatBringsTheSelectionsBack)
{
    CompositorWorld world;
    world.board().replace(items(u"before"_qs));
    world.desktop().removeSeat();
    EXPECT_FALSE(world.board().replace(items(u"nowhere"_qs)));
    world.desktop().addSeat();
    EXPECT_TRUE(waitUntil([&] { return world.board().replace(items(u"«after»"_qs)); }));
    EXPECT_EQ(world.reader().read(), u"«after»"_qs.toUtf8());
    EXPECT_TRUE(world.primary().replace(items(u"selected"_qs)));
    EXPECT_EQ(world.reader().read("-n -p"), "selected");
    world.otherWrites(items(u"theirs"_qs));
    EXPECT_EQ(textOf(world.board()), u"theirs"_qs);
}

} // namespace

} // namespace tulvane::test
