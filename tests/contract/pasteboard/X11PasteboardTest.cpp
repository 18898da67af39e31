#include "X11Peers.h"

#include <platform/linux/x11text/X11Pasteboard.h>
#include <support/Await.h>
#include <support/VirtualDesktop.h>

#include <QElapsedTimer>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace std::chrono_literals;
using testing::ElementsAre;

namespace tulvane {

namespace {

using test::ScriptedOwner;
using test::X11Peer;
using Target = ScriptedOwner::Target;

class X11PasteboardTest : public testing::Test {
protected:
    X11PasteboardTest() { m_front.takeFocus(); }

    std::unique_ptr<SelectionKeeper> startKeeper()
    {
        return SelectionKeeper::start(m_desktop.display().toLocal8Bit());
    }
    PasteboardContents contents() { return test::await(m_board.contents()); }
    /// What a peer that is not in front reads now.
    SelectionRead::Outcome seen() { return X11Peer(m_desktop.display()).read(); }
    static QByteArray pattern(qsizetype size)
    {
        QByteArray bytes(size, Qt::Uninitialized);
        for (qsizetype index = 0; index < size; ++index)
            bytes[index] = static_cast<char>(index * 31 + index / 251);
        return bytes;
    }
    bool waitForRead()
    {
        return test::waitUntil([&] { return m_board.reading() == Pasteboard::Reading::read; });
    }

    /// The owner takes the selection between the moment that our next write is of and the write itself.
    class Overtaking final : public X11Link::Listener {
    public:
        Overtaking(X11Link& link, ScriptedOwner& owner) : m_link(link), m_owner(owner)
        {
            m_link.addListener(*this);
        }
        ~Overtaking() override { m_link.removeListener(*this); }
        void handle(const xcb_generic_event_t& event) override
        {
            if (event.response_type != XCB_PROPERTY_NOTIFY || std::exchange(m_done, true))
                return;
            const auto& notice = reinterpret_cast<const xcb_property_notify_event_t&>(event);
            m_owner.ownAfter(notice.time);
        }

    private:
        X11Link& m_link;
        ScriptedOwner& m_owner;
        bool m_done = false;
    };

    test::VirtualDesktop m_desktop;
    EventLoopScheduler m_scheduler;
    X11Peer m_front{m_desktop.display()};
    std::unique_ptr<X11Link> m_link = X11Link::open(m_desktop.display().toLocal8Bit());
    std::unique_ptr<SelectionKeeper> m_keeper = startKeeper();
    X11Pasteboard m_board{*m_link, *m_keeper, m_scheduler, u"CLIPBOARD"_qs};
    ScriptedOwner m_owner{m_desktop.display()};
};

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

    X11Link& link = m_front.link();
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
    m_board.replace({item});
    X11Peer other(m_desktop.display());
    std::optional<SelectionRead::Outcome> first;
    std::optional<SelectionRead::Outcome> second;
    const auto reader = [&](X11Peer& peer, std::optional<SelectionRead::Outcome>& outcome) {
        return std::make_unique<SelectionRead>(
            peer.link(), m_scheduler, peer.link().makeHiddenWindow(), peer.link().atom(u"CLIPBOARD"_qs),
            [&](const SelectionRead::Outcome& answer) { outcome = answer; });
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

TEST_F(X11PasteboardTest, ALongTextCountsAsReadOnlyWhenAllOfItIs)
{
    m_board.replace({PasteboardItem::text(QString(700'000, u'x'))});
    X11Link& link = m_front.link();
    const xcb_window_t reader = link.makeHiddenWindow();
    const xcb_atom_t property = link.atom(u"PIECES"_qs);
    xcb_convert_selection(link.connection(), reader, link.atom(u"CLIPBOARD"_qs), link.atom(u"UTF8_STRING"_qs),
                          property, XCB_CURRENT_TIME);
    link.flush();
    const auto takeOne = [&] {
        int length = -1;
        EXPECT_TRUE(test::waitUntil([&] {
            const XcbReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
                link.connection(),
                xcb_get_property(link.connection(), 1, reader, property, XCB_ATOM_ANY, 0, 0xffffff),
                nullptr));
            length = reply->type == noAtom ? -1 : xcb_get_property_value_length(reply.get());
            return length >= 0;
        }));
        return length;
    };
    EXPECT_EQ(takeOne(), 4); // the announcement
    int whole = 0;
    for (int length = takeOne(); length > 0; length = takeOne()) {
        EXPECT_EQ(m_board.reading(), Pasteboard::Reading::unread);
        whole += length;
    }
    EXPECT_EQ(whole, 700'000);
    EXPECT_TRUE(waitForRead());
}

TEST_F(X11PasteboardTest, ATextCountsAsReadOnlyWhenItHasBeenTaken)
{
    // A reader that had no more patience when the answer came leaves it where it is.
    m_board.replace({PasteboardItem::text(u"text"_qs)});
    X11Link& link = m_front.link();
    const xcb_window_t reader = link.makeHiddenWindow();
    const xcb_atom_t property = link.atom(u"TEXT_HERE"_qs);
    const auto look = [&](bool take) {
        const XcbReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
            link.connection(),
            xcb_get_property(link.connection(), take ? 1 : 0, reader, property, XCB_ATOM_ANY, 0, 100),
            nullptr));
        return xcb_get_property_value_length(reply.get());
    };
    xcb_convert_selection(link.connection(), reader, link.atom(u"CLIPBOARD"_qs), link.atom(u"UTF8_STRING"_qs),
                          property, XCB_CURRENT_TIME);
    link.flush();
    ASSERT_TRUE(test::waitUntil([&] { return look(false) == 4; }));
    QElapsedTimer waited;
    waited.start();
    while (waited.elapsed() < 100)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    EXPECT_EQ(m_board.reading(), Pasteboard::Reading::unread);
    EXPECT_EQ(look(true), 4);
    EXPECT_TRUE(waitForRead());
}

TEST_F(X11PasteboardTest, AReaderThatDestroysItsWindowHasRead)
{
    m_board.replace({PasteboardItem::text(u"text"_qs)});
    X11Link& link = m_front.link();
    const xcb_window_t reader = link.makeHiddenWindow();
    xcb_convert_selection(link.connection(), reader, link.atom(u"CLIPBOARD"_qs), link.atom(u"UTF8_STRING"_qs),
                          link.atom(u"TEXT_HERE"_qs), XCB_CURRENT_TIME);
    link.flush();
    ASSERT_TRUE(test::waitUntil([&] {
        const XcbReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
            link.connection(),
            xcb_get_property(link.connection(), 0, reader, link.atom(u"TEXT_HERE"_qs), XCB_ATOM_ANY, 0, 100),
            nullptr));
        return xcb_get_property_value_length(reply.get()) == 4;
    }));
    xcb_destroy_window(link.connection(), reader);
    link.flush();
    EXPECT_TRUE(waitForRead());
}

TEST_F(X11PasteboardTest, OnlyTextCountsAsReading)
{
    m_board.replace({PasteboardItem::text(u"text"_qs)});
    EXPECT_TRUE(m_front.readTarget(u"TARGETS"_qs));
    EXPECT_TRUE(m_front.readTarget(u"TIMESTAMP"_qs));
    EXPECT_EQ(m_board.reading(), Pasteboard::Reading::unread);
    EXPECT_TRUE(m_front.readTarget(u"UTF8_STRING"_qs));
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
    const SelectionRead::Outcome before = seen();
    const PasteboardContents saved = contents();
    m_board.replace({PasteboardItem::text(u"between"_qs)});
    m_board.replace(saved.items);
    const SelectionRead::Outcome after = seen();
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
    EXPECT_GE(clock.elapsed(), 290);
    EXPECT_LT(clock.elapsed(), 1000);
    EXPECT_GT(heartbeats, 10);
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

TEST_F(X11PasteboardTest, AnswersAReaderThatHoldsTheMainThreadWhileItWaits)
{
    // As a text field of our own window does, whose toolkit waits for the answer without running the event
    // loop.
    m_board.replace({PasteboardItem::text(u"blåbær"_qs)});
    xcb_connection_t* const reader = xcb_connect(m_desktop.display().toLocal8Bit().constData(), nullptr);
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(reader)).data->root;
    const xcb_window_t window = xcb_generate_id(reader);
    xcb_create_window(reader, XCB_COPY_FROM_PARENT, window, root, 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_convert_selection(reader, window, m_link->atom(u"CLIPBOARD"_qs), m_link->atom(u"UTF8_STRING"_qs),
                          m_link->atom(u"TEXT_HERE"_qs), XCB_CURRENT_TIME);
    xcb_flush(reader);
    QElapsedTimer waited;
    waited.start();
    bool isAnswered = false;
    while (!isAnswered && waited.elapsed() < 5000) {
        const XcbReply<xcb_generic_event_t> event(xcb_poll_for_event(reader));
        isAnswered = event && (event->response_type & 0x7f) == XCB_SELECTION_NOTIFY;
    }
    EXPECT_TRUE(isAnswered);
    xcb_disconnect(reader);
}

TEST_F(X11PasteboardTest, AReadOfTheTextBeforeIsNotTakenForOneOfThisText)
{
    m_board.replace({PasteboardItem::text(u"first"_qs)});
    EXPECT_EQ(m_front.readTarget(u"UTF8_STRING"_qs), QByteArray("first"));
    // The news of it may still be on its way.
    m_board.replace({PasteboardItem::text(u"second"_qs)});
    QElapsedTimer waited;
    waited.start();
    while (waited.elapsed() < 100)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    EXPECT_EQ(m_board.reading(), Pasteboard::Reading::unread);
}

TEST_F(X11PasteboardTest, ADisplayThatIsNotThereCannotBeOpened)
{
    EXPECT_EQ(SelectionKeeper::start(":4711"), nullptr);
    EXPECT_EQ(X11Link::open(":4711"), nullptr);
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
