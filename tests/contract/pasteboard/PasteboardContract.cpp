#include "DataControlWorld.h"
#include "X11Peers.h"

#include <platform/fake/FakePasteboard.h>
#include <platform/linux/session/X11Text.h>
#include <support/Await.h>
#include <support/ScratchFolder.h>
#include <support/VirtualDesktop.h>

#include <QFileInfo>

#include <gtest/gtest.h>

#include <optional>

namespace tulvane {

namespace {

const QList<PasteboardItem> rich{{{{u"text/html"_qs, "<b>æ</b>"},
                                   {u"application/x-own"_qs, QByteArray("\0\1\xff", 3)},
                                   {u"UTF8_STRING"_qs, "æ"}}}};

/// One pasteboard, and the programs around it.
class FakeWorld {
public:
    FakeWorld() { m_board.tellReads(); }
    Pasteboard& board() { return m_board; }
    PasteTarget front() { return FakePasteboards::editor; }
    void otherWrites(const QList<PasteboardItem>& items) { m_board.otherProgramWrites(items); }
    void frontReads() { m_board.frontProgramReads(); }
    void backgroundReads() { (void)m_board.contents(); }
    void otherClears() { m_board.otherProgramWrites(QList<PasteboardItem>()); }

private:
    FakePasteboard m_board;
};

class X11World {
public:
    X11World() { m_front.takeFocus(); }
    Pasteboard& board() { return m_text->pasteboards().general(); }
    PasteTarget front() { return m_text->pasteboards().pasteTarget(); }
    void otherWrites(const QList<PasteboardItem>& items) { m_other->pasteboards().general().replace(items); }
    void otherClears() { m_other->pasteboards().general().clear(); }
    void frontReads() { (void)m_front.read(); }
    /// In a process that is none of the one in front, which is this test's.
    void backgroundReads()
    {
        const QString file = m_scratch.file(u"read"_qs);
        m_desktop.start(u"sh"_qs,
                        {u"-c"_qs, u"setsid --fork xclip -o -selection clipboard > \"$0\""_qs, file});
        ASSERT_TRUE(test::waitUntil([&] { return QFileInfo(file).size() > 0; }));
    }

private:
    test::VirtualDesktop m_desktop;
    EventLoopScheduler m_scheduler;
    test::X11Peer m_front{m_desktop.display()};
    test::ScratchFolder m_scratch;
    std::unique_ptr<X11Text> m_text = X11Text::open(m_desktop.display().toLocal8Bit(), {}, m_scheduler);
    std::unique_ptr<X11Text> m_other = X11Text::open(m_desktop.display().toLocal8Bit(), {}, m_scheduler);
};

template <class World>
class PasteboardContract : public testing::Test {
protected:
    void SetUp() override
    {
        if constexpr (requires { World::desktopKind; }) {
            TULVANE_NEEDS(World::desktopKind);
        }
        m_world.emplace();
    }
    Pasteboard& board() { return m_world->board(); }
    PasteboardContents contents() { return test::await(board().contents()); }
    QString text()
    {
        const PasteboardContents all = contents();
        return all.items.size() == 1 ? all.items.first().plainText().value_or(QString()) : QString();
    }

    std::optional<World> m_world; ///< made once it is known that its packages are there
};

using Worlds =
    testing::Types<FakeWorld, X11World, test::SwayWorld, test::KWinWorld, test::ExtWorld, test::WlrWorld>;
TYPED_TEST_SUITE(PasteboardContract, Worlds);

} // namespace

TYPED_TEST(PasteboardContract, AnEmptyOneHasNoItemsAndIsComplete)
{
    const PasteboardContents all = this->contents();
    EXPECT_TRUE(all.items.isEmpty());
    EXPECT_TRUE(all.complete);
}

TYPED_TEST(PasteboardContract, GivesBackWhatWeWrote)
{
    EXPECT_TRUE(this->board().replace({PasteboardItem::text(u"«æøå» 😀\n"_qs)}));
    EXPECT_EQ(this->text(), u"«æøå» 😀\n"_qs);
}

TYPED_TEST(PasteboardContract, GivesEveryTypeThatAnotherProgramWroteByteForByte)
{
    this->m_world->otherWrites(rich);
    const PasteboardContents all = this->contents();
    EXPECT_TRUE(all.complete);
    EXPECT_EQ(all.items, rich);
}

TYPED_TEST(PasteboardContract, CountsOurOwnWritesAndClearsAtOnceAndOnce)
{
    const qint64 before = this->board().changeCount();
    this->board().replace({PasteboardItem::text(u"a"_qs)});
    const qint64 written = this->board().changeCount();
    EXPECT_GT(written, before);
    QCoreApplication::processEvents();
    EXPECT_EQ(this->board().changeCount(), written);
    this->board().clear();
    const qint64 cleared = this->board().changeCount();
    EXPECT_GT(cleared, written);
    QCoreApplication::processEvents();
    EXPECT_EQ(this->board().changeCount(), cleared);
    EXPECT_TRUE(this->contents().items.isEmpty());
}

TYPED_TEST(PasteboardContract, CountsAnotherProgramsWriteBeforeTheEventLoopHasRun)
{
    this->board().replace({PasteboardItem::text(u"a"_qs)});
    const qint64 before = this->board().changeCount();
    this->m_world->otherWrites({PasteboardItem::text(u"b"_qs)});
    const qint64 after = this->board().changeCount();
    EXPECT_GT(after, before);
    EXPECT_EQ(this->text(), u"b"_qs);
    EXPECT_EQ(this->board().changeCount(), after);
    this->m_world->otherClears();
    EXPECT_GT(this->board().changeCount(), after);
}

TYPED_TEST(PasteboardContract, KnowsItsOwnWritesFromAnothersThatFollowAtOnce)
{
    this->board().replace({PasteboardItem::text(u"a"_qs)});
    this->m_world->otherWrites({PasteboardItem::text(u"b"_qs)});
    EXPECT_LT(this->board().ownChangeCount(), this->board().changeCount());
    this->board().clear();
    EXPECT_EQ(this->board().ownChangeCount(), this->board().changeCount());
    this->board().replace({PasteboardItem::text(u"c"_qs)});
    EXPECT_EQ(this->board().ownChangeCount(), this->board().changeCount());
}

TYPED_TEST(PasteboardContract, ReplacesOnlyWhatNobodyElseHasChanged)
{
    this->board().replace({PasteboardItem::text(u"a"_qs)});
    const qint64 own = this->board().ownChangeCount();
    this->m_world->otherWrites({PasteboardItem::text(u"b"_qs)});
    for (const QList<PasteboardItem>& items : {rich, QList<PasteboardItem>()}) {
        EXPECT_FALSE(this->board().replaceUnlessChanged(items, own));
        EXPECT_EQ(this->text(), u"b"_qs);
    }
    const qint64 now = this->board().changeCount();
    EXPECT_TRUE(this->board().replaceUnlessChanged(rich, now));
    EXPECT_GT(this->board().changeCount(), now);
    EXPECT_EQ(this->contents().items, rich);
    EXPECT_TRUE(this->board().replaceUnlessChanged({}, this->board().changeCount()));
    EXPECT_TRUE(this->contents().items.isEmpty());
}

TYPED_TEST(PasteboardContract, EvenTheSameTextCountsAsAChange)
{
    this->board().replace({PasteboardItem::text(u"a"_qs)});
    const qint64 before = this->board().changeCount();
    this->m_world->otherWrites({PasteboardItem::text(u"a"_qs)});
    EXPECT_GT(this->board().changeCount(), before);
}

TYPED_TEST(PasteboardContract, TellsWhenTheProgramInFrontHasReadAndNobodyElse)
{
    this->board().replaceFor({PasteboardItem::text(u"a"_qs)}, this->m_world->front());
    EXPECT_EQ(this->board().reading(), Pasteboard::Reading::unread);
    this->m_world->backgroundReads();
    EXPECT_EQ(this->board().reading(), Pasteboard::Reading::unread);
    int activity = 0;
    this->board().setActivityHandler([&] { ++activity; });
    this->m_world->frontReads();
    EXPECT_TRUE(test::waitUntil([&] { return activity > 0; }));
    EXPECT_EQ(this->board().reading(), Pasteboard::Reading::read);
    this->m_world->otherWrites({PasteboardItem::text(u"b"_qs)});
    (void)this->board().changeCount();
    EXPECT_EQ(this->board().reading(), Pasteboard::Reading::read);
    this->board().replace({PasteboardItem::text(u"c"_qs)});
    EXPECT_EQ(this->board().reading(), Pasteboard::Reading::unread);
}

TYPED_TEST(PasteboardContract, TellsOfAnotherProgramsWrite)
{
    int activity = 0;
    this->board().setActivityHandler([&] { ++activity; });
    this->m_world->otherWrites(rich);
    EXPECT_TRUE(test::waitUntil([&] { return activity > 0; }));
}

TYPED_TEST(PasteboardContract, PutsBackEveryTypeOfAnItem)
{
    this->m_world->otherWrites(rich);
    const PasteboardContents saved = this->contents();
    this->board().replace({PasteboardItem::text(u"between"_qs)});
    EXPECT_TRUE(this->board().replace(saved.items));
    EXPECT_EQ(this->contents().items, rich);
}

} // namespace tulvane
