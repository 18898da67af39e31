#include "X11PasteboardFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace std::chrono_literals;
using testing::ElementsAre;

namespace tulvane {

namespace {

using test::ScriptedOwner;
using test::X11Peer;
using Target = ScriptedOwner::Target;

using X11PasteboardTest = test::X11PasteboardFixture;

} // namespace

TEST_F(X11PasteboardTest, OffersTextUnderEveryNameThatProgramsAskFor)
{
    m_board.replace({PasteboardItem::text(u"blåbær"_qs)});
    for (const char* name : {"UTF8_STRING", "text/plain;charset=utf-8", "text/plain", "TEXT"})
        EXPECT_EQ(m_front.readTarget(QString::fromLatin1(name)), QByteArray("blåbær")) << name;
    EXPECT_EQ(m_front.readTarget(u"STRING"_qs), QByteArray("bl\xe5"
                                                           "b\xe6r"));
    EXPECT_EQ(m_front.readTarget(u"image/png"_qs), std::nullopt);
}

TEST_F(X11PasteboardTest, TextThatLatin1CannotHoldIsNotOfferedAsString)
{
    m_board.replace({PasteboardItem::text(u"€"_qs)});
    EXPECT_EQ(m_front.readTarget(u"STRING"_qs), std::nullopt);
    EXPECT_EQ(m_front.readTarget(u"UTF8_STRING"_qs), QByteArray("€"));
}

TEST_F(X11PasteboardTest, AnswersTargetsTimestampAndMultiple)
{
    m_board.replace({PasteboardItem::text(u"text"_qs)});
    EXPECT_EQ(m_front.readTarget(u"TIMESTAMP"_qs).value_or(QByteArray()).size(), 4);

    X11Connection& link = m_front.link();
    const xcb_window_t reader = link.makeHiddenWindow();
    const xcb_atom_t list = link.atom(u"PAIRS"_qs);
    const std::array pairs{link.atom(u"UTF8_STRING"_qs), link.atom(u"ONE"_qs), link.atom(u"image/png"_qs),
                           link.atom(u"TWO"_qs)};
    xcb_change_property(link.connection(), XCB_PROP_MODE_REPLACE, reader, list, link.atom(u"ATOM_PAIR"_qs),
                        32, 4, pairs.data());
    xcb_convert_selection(link.connection(), reader, link.atom(u"CLIPBOARD"_qs), link.atom(u"MULTIPLE"_qs),
                          list, XCB_CURRENT_TIME);
    link.flush();
    const auto property = [&](xcb_atom_t name) {
        const XcbReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
            link.connection(), xcb_get_property(link.connection(), 0, reader, name, XCB_ATOM_ANY, 0, 100),
            nullptr));
        return QByteArray(static_cast<const char*>(xcb_get_property_value(reply.get())),
                          xcb_get_property_value_length(reply.get()));
    };
    ASSERT_TRUE(test::waitUntil([&] { return property(pairs[1]) == "text"; }));
    std::array<xcb_atom_t, 4> answered{};
    ASSERT_TRUE(test::waitUntil([&] {
        const QByteArray bytes = property(list);
        std::memcpy(answered.data(), bytes.constData(), sizeof(answered));
        return answered != pairs;
    }));
    EXPECT_THAT(answered, ElementsAre(pairs[0], pairs[1], pairs[2], noAtom));
}

TEST_F(X11PasteboardTest, LongDataGoesOutInPiecesToSeveralReadersAtOnce)
{
    const PasteboardItem item{
        {{u"application/x-long"_qs, pattern(1'500'001)}, {u"UTF8_STRING"_qs, pattern(600'000)}}};
    m_board.replaceFor({item}, frontTarget());
    X11Peer other(m_desktop.display());
    std::optional<SelectionReader::Outcome> first;
    std::optional<SelectionReader::Outcome> second;
    const auto reader = [&](X11Peer& peer, std::optional<SelectionReader::Outcome>& outcome) {
        return std::make_unique<SelectionReader>(
            peer.link(), m_scheduler, peer.link().makeHiddenWindow(), peer.link().atom(u"CLIPBOARD"_qs),
            [&](const SelectionReader::Outcome& answer) { outcome = answer; });
    };
    const auto one = reader(m_front, first);
    const auto two = reader(other, second);
    one->begin();
    two->begin();
    ASSERT_TRUE(test::waitUntil([&] { return first && second; }));
    EXPECT_EQ(first->contents.items, QList{item});
    EXPECT_EQ(second->contents.items, QList{item});
    EXPECT_TRUE(waitForRead());
}

TEST_F(X11PasteboardTest, AReaderThatDiesInTheMiddleIsForgotten)
{
    m_board.replace({PasteboardItem{{{u"UTF8_STRING"_qs, pattern(2'000'000)}}}});
    {
        X11Peer dying(m_desktop.display());
        xcb_convert_selection(dying.link().connection(), dying.link().makeHiddenWindow(),
                              dying.link().atom(u"CLIPBOARD"_qs), dying.link().atom(u"UTF8_STRING"_qs),
                              dying.link().atom(u"DATA"_qs), XCB_CURRENT_TIME);
        dying.catchUp();
        QCoreApplication::processEvents();
    }
    EXPECT_EQ(seen().contents.items.first().dataByType.value(u"UTF8_STRING"_qs), pattern(2'000'000));
}

TEST_F(X11PasteboardTest, ReadsLongDataThatComesInPieces)
{
    m_owner.offer({{u"image/png"_qs, Target::inPieces(pattern(300'000), 7)},
                   {u"UTF8_STRING"_qs, Target::inPieces("short", 1)},
                   {u"empty"_qs, Target::inPieces("", 1)}});
    m_owner.own();
    const PasteboardContents all = contents();
    EXPECT_TRUE(all.complete);
    ASSERT_EQ(all.items.size(), 1);
    EXPECT_EQ(all.items.first().dataByType,
              (QMap<QString, QByteArray>{
                  {u"image/png"_qs, pattern(300'000)}, {u"UTF8_STRING"_qs, "short"}, {u"empty"_qs, ""}}));
}

TEST_F(X11PasteboardTest, PutsBackEachTargetInTheFormInWhichItCame)
{
    const QByteArray numbers("\1\0\0\0\2\0\0\0", 8);
    m_owner.offer({{u"application/x-color"_qs, Target(QByteArray("\1\2\3\4", 4), {}, 16)},
                   {u"_OWN_NUMBERS"_qs, Target(numbers, u"INTEGER"_qs, 32)},
                   {u"TEXT"_qs, Target("text", u"UTF8_STRING"_qs, 8)}});
    m_owner.own();
    const SelectionReader::Outcome before = seen();
    const PasteboardContents saved = contents();
    m_board.replace({PasteboardItem::text(u"between"_qs)});
    m_board.replace(saved.items);
    const SelectionReader::Outcome after = seen();
    EXPECT_EQ(after.contents.items, before.contents.items);
    ASSERT_EQ(after.forms.size(), 3);
    for (auto form = before.forms.cbegin(); form != before.forms.cend(); ++form) {
        EXPECT_EQ(after.forms.value(form.key()).format, form->format);
        EXPECT_EQ(after.forms.value(form.key()).type, form->type);
    }
}

TEST_F(X11PasteboardTest, AsksForNothingThatOnlyTellsOrActs)
{
    m_owner.offer({{u"TIMESTAMP"_qs, Target("abcd")},
                   {u"MULTIPLE"_qs, Target("abcd")},
                   {u"SAVE_TARGETS"_qs, Target("abcd")},
                   {u"DELETE"_qs, Target("abcd")},
                   {u"INSERT_SELECTION"_qs, Target("abcd")},
                   {u"INSERT_PROPERTY"_qs, Target("abcd")},
                   {u"application/x-qt-image"_qs, Target("abcd")},
                   {u"UTF8_STRING"_qs, Target("text")},
                   {u"UTF8_STRING"_qs, Target("text")}});
    m_owner.own();
    const PasteboardContents all = contents();
    EXPECT_THAT(m_owner.asked(), ElementsAre(u"TARGETS"_qs, u"UTF8_STRING"_qs));
    EXPECT_TRUE(all.complete);
}

TEST_F(X11PasteboardTest, ATargetThatIsOfferedAndThenRefusedIsLeftOut)
{
    m_owner.offer({{u"a"_qs, Target("1")}, {u"b"_qs, Target::refusing()}, {u"c"_qs, Target("3")}});
    m_owner.own();
    const PasteboardContents all = contents();
    EXPECT_TRUE(all.complete);
    EXPECT_EQ(all.items.first().dataByType, (QMap<QString, QByteArray>{{u"a"_qs, "1"}, {u"c"_qs, "3"}}));
}

TEST_F(X11PasteboardTest, AnOwnerThatNamesNoTargetsIsAskedForText)
{
    m_owner.refuseList();
    m_owner.offer({{u"STRING"_qs, Target("old")}});
    m_owner.own();
    const PasteboardContents all = contents();
    EXPECT_TRUE(all.complete);
    EXPECT_EQ(all.items, (QList{PasteboardItem{{{u"STRING"_qs, "old"}}}}));
}

TEST_F(X11PasteboardTest, AnOwnerThatDoesNothingIsGivenUpOnWithoutBlockingAnything)
{
    m_owner.offer({{u"a"_qs, Target("1")}, {u"b"_qs, Target::silent()}});
    m_owner.own();
    int heartbeats = 0;
    QTimer heart;
    QObject::connect(&heart, &QTimer::timeout, [&] { ++heartbeats; });
    heart.start(10ms);
    QElapsedTimer clock;
    clock.start();
    const PasteboardContents all = contents();
    EXPECT_FALSE(all.complete);
    // The format that does not come is left out, and the rest is there.
    EXPECT_EQ(all.items, (QList{PasteboardItem{{{u"a"_qs, "1"}}}}));
    EXPECT_GE(clock.elapsed(), 2900);
    EXPECT_LT(clock.elapsed(), 6000);
    EXPECT_GT(heartbeats, 10);
}

TEST_F(X11PasteboardTest, APictureIsNotWaitedForInYetAnotherEncoding)
{
    m_owner.offer({{u"image/bmp"_qs, Target::silent()}, {u"image/png"_qs, Target("1")}});
    m_owner.own();
    QElapsedTimer clock;
    clock.start();
    const PasteboardContents all = contents();
    EXPECT_TRUE(all.complete);
    EXPECT_EQ(all.items, (QList{PasteboardItem{{{u"image/png"_qs, "1"}}}}));
    EXPECT_LT(clock.elapsed(), 1500);
    // Where it is the only one, nothing else stands for it.
    m_owner.offer({{u"image/bmp"_qs, Target::silent()}, {u"text/html"_qs, Target("2")}});
    m_owner.own();
    EXPECT_FALSE(contents().complete);
}

TEST_F(X11PasteboardTest, WhatIsReadAheadIsReadInEveryEncodingUntilItIsAskedFor)
{
    m_owner.offer({{u"image/bmp"_qs, Target::silent()},
                   {u"image/png"_qs, Target("1")},
                   {u"image/jpeg"_qs, Target("3")}});
    m_owner.own();
    m_board.readAhead();
    EXPECT_TRUE(test::waitUntil([&] { return m_owner.asked().contains(u"image/jpeg"_qs); }));
    const PasteboardContents all = contents();
    EXPECT_TRUE(all.complete);
    EXPECT_EQ(all.items, (QList{PasteboardItem{{{u"image/jpeg"_qs, "3"}, {u"image/png"_qs, "1"}}}}));
}

TEST_F(X11PasteboardTest, AnOwnerThatDoesNotEvenNameItsFormatsIsGivenUpOnSoon)
{
    m_owner.offer({{u"TARGETS"_qs, Target::silent()}, {u"a"_qs, Target("1")}});
    m_owner.own();
    QElapsedTimer clock;
    clock.start();
    const PasteboardContents all = contents();
    EXPECT_FALSE(all.complete);
    EXPECT_TRUE(all.items.isEmpty());
    EXPECT_LT(clock.elapsed(), 2000);
}

TEST_F(X11PasteboardTest, FormatsAreReadInTheOrderOfTheirWorth)
{
    m_owner.offer({{u"image/bmp"_qs, Target("1")},
                   {u"image/png"_qs, Target("2")},
                   {u"application/x-own"_qs, Target("3")},
                   {u"image/jpeg"_qs, Target("4")},
                   {u"text/uri-list"_qs, Target("5")},
                   {u"text/html"_qs, Target("6")},
                   {u"UTF8_STRING"_qs, Target("7")}});
    m_owner.own();
    EXPECT_TRUE(contents().complete);
    EXPECT_THAT(m_owner.asked(),
                ElementsAre(u"TARGETS"_qs, u"UTF8_STRING"_qs, u"text/html"_qs, u"text/uri-list"_qs,
                            u"image/png"_qs, u"application/x-own"_qs, u"image/bmp"_qs, u"image/jpeg"_qs));
}

TEST_F(X11PasteboardTest, WhatWasReadAheadIsNotAskedForAgain)
{
    m_owner.offer({{u"a"_qs, Target("1")}});
    m_owner.own();
    m_board.readAhead();
    ASSERT_TRUE(test::waitUntil([&] { return m_owner.asked().contains(u"a"_qs); }));
    EXPECT_EQ(contents().items, (QList{PasteboardItem{{{u"a"_qs, "1"}}}}));
    EXPECT_EQ(m_owner.asked().size(), 2);
    // Once only: the next one sees what is there by then.
    EXPECT_EQ(contents().items, (QList{PasteboardItem{{{u"a"_qs, "1"}}}}));
    EXPECT_EQ(m_owner.asked().size(), 4);
}

TEST_F(X11PasteboardTest, WhatWasReadAheadIsForgottenWhenAnotherProgramWrites)
{
    m_owner.offer({{u"a"_qs, Target("old")}});
    m_owner.own();
    m_board.readAhead();
    ASSERT_TRUE(test::waitUntil([&] { return m_owner.asked().contains(u"a"_qs); }));
    ScriptedOwner newer(m_desktop.display());
    newer.offer({{u"c"_qs, Target("new")}});
    newer.own();
    EXPECT_EQ(contents().items, (QList{PasteboardItem{{{u"c"_qs, "new"}}}}));
}

TEST_F(X11PasteboardTest, AnOwnerThatStopsAmidThePiecesIsGivenUpOn)
{
    m_owner.offer({{u"a"_qs, Target::inPieces(pattern(10'000), 10, 4)}});
    m_owner.own();
    const PasteboardContents all = contents();
    EXPECT_FALSE(all.complete);
    EXPECT_TRUE(all.items.isEmpty());
}

TEST_F(X11PasteboardTest, AnOwnerThatDiesLeavesAnEmptyPasteboardAndNoWait)
{
    auto dying = std::make_unique<ScriptedOwner>(m_desktop.display());
    dying->offer({{u"a"_qs, Target::silent()}});
    dying->own();
    const qint64 before = m_board.changeCount();
    auto future = m_board.contents();
    ASSERT_TRUE(test::waitUntil([&] { return dying->asked().contains(u"a"_qs); }));
    dying.reset();
    const PasteboardContents all = test::await(future);
    EXPECT_TRUE(all.complete);
    EXPECT_TRUE(all.items.isEmpty());
    EXPECT_GT(m_board.changeCount(), before);
}

TEST_F(X11PasteboardTest, WhenTheOwnerChangesDuringTheReadTheNewContentIsWhatIsRead)
{
    m_owner.offer({{u"a"_qs, Target("old")}, {u"b"_qs, Target::silent()}});
    m_owner.own();
    auto future = m_board.contents();
    ASSERT_TRUE(test::waitUntil([&] { return m_owner.asked().contains(u"b"_qs); }));
    ScriptedOwner newer(m_desktop.display());
    newer.offer({{u"c"_qs, Target("new")}});
    newer.own();
    const PasteboardContents all = test::await(future);
    EXPECT_TRUE(all.complete);
    EXPECT_EQ(all.items, (QList{PasteboardItem{{{u"c"_qs, "new"}}}}));
}

TEST_F(X11PasteboardTest, TheOwnersDeathClearsAndCounts)
{
    {
        ScriptedOwner brief(m_desktop.display());
        brief.own();
    }
    const qint64 before = m_board.changeCount();
    m_board.replace({PasteboardItem::text(u"a"_qs)});
    EXPECT_EQ(m_board.changeCount(), before + 1);
}

TEST_F(X11PasteboardTest, ClearingWhatAnotherProgramOwnsLeavesNoOwner)
{
    m_owner.offer({{u"a"_qs, Target("1")}});
    m_owner.own();
    m_board.clear();
    EXPECT_TRUE(contents().items.isEmpty());
    EXPECT_TRUE(seen().contents.items.isEmpty());
}

TEST_F(X11PasteboardTest, AProgramThatIsQuickerThanOurWriteKeepsThePasteboard)
{
    m_owner.offer({{u"UTF8_STRING"_qs, Target("theirs")}});
    m_board.replace({PasteboardItem::text(u"ours"_qs)});
    {
        const Overtaking overtaking(*m_link, m_owner);
        EXPECT_FALSE(
            m_board.replaceUnlessChanged({PasteboardItem::text(u"saved"_qs)}, m_board.changeCount()));
    }
    EXPECT_LT(m_board.ownChangeCount(), m_board.changeCount());
    EXPECT_EQ(contents().items.first().plainText(), u"theirs"_qs);
}

TEST_F(X11PasteboardTest, AClearingThatCameTooLateHidesNoOtherOne)
{
    m_owner.offer({{u"UTF8_STRING"_qs, Target("theirs")}});
    {
        const Overtaking overtaking(*m_link, m_owner);
        m_board.clear();
    }
    EXPECT_EQ(contents().items.first().plainText(), u"theirs"_qs);
    const qint64 before = m_board.changeCount();
    const auto keeper = startKeeper();
    X11Pasteboard other(m_owner.link(), *keeper, m_scheduler, u"CLIPBOARD"_qs);
    other.clear();
    EXPECT_GT(m_board.changeCount(), before);
}

TEST_F(X11PasteboardTest, AReadThatRunsWhenThePasteboardGoesStillFinishes)
{
    m_owner.offer({{u"a"_qs, Target::silent()}});
    m_owner.own();
    const auto keeper = startKeeper();
    auto board = std::make_unique<X11Pasteboard>(*m_link, *keeper, m_scheduler, u"CLIPBOARD"_qs);
    const auto future = board->contents();
    board.reset();
    EXPECT_FALSE(test::await(future).complete);
}

TEST_F(X11PasteboardTest, OutlivesItsServer)
{
    m_board.replace({PasteboardItem::text(u"a"_qs)});
    m_desktop.killServer();
    ASSERT_TRUE(test::waitUntil([&] { return m_link->isBroken(); }));
    EXPECT_FALSE(m_board.replace({PasteboardItem::text(u"b"_qs)}));
    (void)m_board.changeCount();
    m_board.clear();
    EXPECT_FALSE(contents().complete);
}

TEST_F(X11PasteboardTest, ADisplayThatIsNotThereCannotBeOpened)
{
    EXPECT_EQ(SelectionOwner::start(":4711"), nullptr);
    EXPECT_EQ(X11Connection::open(":4711"), nullptr);
}

TEST_F(X11PasteboardTest, TheTwoSelectionsAreTwoPasteboards)
{
    X11Pasteboard primary(*m_link, *m_keeper, m_scheduler, u"PRIMARY"_qs);
    m_board.replace({PasteboardItem::text(u"copied"_qs)});
    primary.replace({PasteboardItem::text(u"selected"_qs)});
    EXPECT_EQ(m_front.readTarget(u"UTF8_STRING"_qs, u"PRIMARY"_qs), QByteArray("selected"));
    EXPECT_EQ(m_front.readTarget(u"UTF8_STRING"_qs), QByteArray("copied"));
    primary.clear();
    EXPECT_EQ(m_front.readTarget(u"UTF8_STRING"_qs, u"PRIMARY"_qs), std::nullopt);
    EXPECT_EQ(m_front.readTarget(u"UTF8_STRING"_qs), QByteArray("copied"));
}

} // namespace tulvane
