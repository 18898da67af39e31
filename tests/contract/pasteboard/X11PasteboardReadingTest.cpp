// What counts as reading, and that every reader is answered.
#include "X11PasteboardFixture.h"

namespace tulvane {

namespace {

using X11PasteboardReadingTest = test::X11PasteboardFixture;

} // namespace

TEST_F(X11PasteboardReadingTest, ALongTextCountsAsReadOnlyWhenAllOfItIs)
{
    m_board.replaceFor({PasteboardItem::text(QString(700'000, u'x'))}, frontTarget());
    X11Connection& link = m_front.link();
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

TEST_F(X11PasteboardReadingTest, ATextCountsAsReadOnlyWhenItHasBeenTaken)
{
    // A reader that had no more patience when the answer came leaves it where it is.
    m_board.replaceFor({PasteboardItem::text(u"text"_qs)}, frontTarget());
    X11Connection& link = m_front.link();
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

TEST_F(X11PasteboardReadingTest, AReaderThatDestroysItsWindowHasRead)
{
    m_board.replaceFor({PasteboardItem::text(u"text"_qs)}, frontTarget());
    X11Connection& link = m_front.link();
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

TEST_F(X11PasteboardReadingTest, OnlyTextCountsAsReading)
{
    m_board.replaceFor({PasteboardItem::text(u"text"_qs)}, frontTarget());
    EXPECT_TRUE(m_front.readTarget(u"TARGETS"_qs));
    EXPECT_TRUE(m_front.readTarget(u"TIMESTAMP"_qs));
    EXPECT_EQ(m_board.reading(), Pasteboard::Reading::unread);
    EXPECT_TRUE(m_front.readTarget(u"UTF8_STRING"_qs));
    EXPECT_TRUE(waitForRead());
}

TEST_F(X11PasteboardReadingTest, TheProgramInFrontMayReadOverAnotherConnection)
{
    m_board.replaceFor({PasteboardItem::text(u"text"_qs)}, frontTarget());
    test::X11Peer other(m_desktop.display());
    EXPECT_TRUE(other.readTarget(u"UTF8_STRING"_qs));
    EXPECT_TRUE(waitForRead());
}

TEST_F(X11PasteboardReadingTest, TheProgramInFrontMayReadInAProcessThatItStarted)
{
    m_board.replaceFor({PasteboardItem::text(u"text"_qs)}, frontTarget());
    // It ends as soon as it has read.
    m_desktop.start(u"xclip"_qs, {u"-o"_qs, u"-selection"_qs, u"clipboard"_qs});
    EXPECT_TRUE(waitForRead());
}

TEST_F(X11PasteboardReadingTest, AReadOfTheTextBeforeIsNotTakenForOneOfThisText)
{
    m_board.replaceFor({PasteboardItem::text(u"first"_qs)}, frontTarget());
    EXPECT_EQ(m_front.readTarget(u"UTF8_STRING"_qs), QByteArray("first"));
    // The news of it may still be on its way.
    m_board.replaceFor({PasteboardItem::text(u"second"_qs)}, frontTarget());
    QElapsedTimer waited;
    waited.start();
    while (waited.elapsed() < 100)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    EXPECT_EQ(m_board.reading(), Pasteboard::Reading::unread);
}

TEST_F(X11PasteboardReadingTest, AnswersAReaderThatHoldsTheMainThreadWhileItWaits)
{
    // As a text field of our own window does, whose toolkit waits for the answer without running the event
    // loop.
    m_board.replaceFor({PasteboardItem::text(u"blåbær"_qs)}, frontTarget());
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

} // namespace tulvane
