#include <settings/InterfaceLanguage.h>
#include <support/ui/UiWorld.h>
#include <ui/viewmodels/HistoryViewModel.h>

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include <gtest/gtest.h>

namespace tulvane::test {

namespace {

using namespace std::chrono_literals;

class HistoryViewModelTest : public ::testing::Test {
protected:
    HistoryViewModelTest() { world.installModel(world.settings.selectedModelID()); }

    [[nodiscard]] static QString text(const HistoryViewModel& model, int row, int role)
    {
        return model.data(model.index(row), role).toString();
    }

    UiWorld world;
};

TEST_F(HistoryViewModelTest, ARowTellsTextTimeLengthAndWords)
{
    world.settings.autoCapitalize.set(false);
    world.dictate(QStringLiteral("hei på – deg"), 4.3);
    const HistoryViewModel model(world.session, world.stats, world.clock, world.boards, world.scheduler, 25,
                                 nullptr);
    ASSERT_EQ(model.count(), 1);
    EXPECT_EQ(text(model, 0, HistoryViewModel::TranscriptRole), u"hei på – deg");
    EXPECT_EQ(text(model, 0, HistoryViewModel::TimeRole), u"12:00 PM");
    EXPECT_EQ(text(model, 0, HistoryViewModel::LengthRole), u"4.3 s");
    EXPECT_EQ(text(model, 0, HistoryViewModel::WordsRole), u"3 words");
    EXPECT_EQ(text(model, 0, HistoryViewModel::CopyLabelRole), u"Copy");
    EXPECT_FALSE(model.data(model.index(1), HistoryViewModel::TranscriptRole).isValid());
}

TEST_F(HistoryViewModelTest, NumbersAndTimesFollowTheLanguage)
{
    world.dictate(QStringLiteral("hei"), 2.5);
    installInterfaceLanguage(AppLanguage::norwegian);
    const HistoryViewModel model(world.session, world.stats, world.clock, world.boards, world.scheduler, 25,
                                 nullptr);
    EXPECT_EQ(text(model, 0, HistoryViewModel::TimeRole), u"12:00");
    EXPECT_EQ(text(model, 0, HistoryViewModel::LengthRole), u"2,5 s");
    EXPECT_EQ(text(model, 0, HistoryViewModel::WordsRole), u"1 ord");
    EXPECT_EQ(text(model, 0, HistoryViewModel::CopyLabelRole), u"Kopier");
}

TEST_F(HistoryViewModelTest, ATimeOfAnotherDayHasItsDate)
{
    HistoryViewModel model(world.session, world.stats, world.clock, world.boards, world.scheduler, 25,
                           nullptr);
    world.dictate(QStringLiteral("hei"));
    EXPECT_EQ(text(model, 0, HistoryViewModel::TimeRole), u"12:00 PM");
    QSignalSpy changes(&model, &QAbstractItemModel::dataChanged);
    world.clock.advance(13h);
    model.refresh();
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(text(model, 0, HistoryViewModel::TimeRole), u"11/20/26 12:00 PM");
}

TEST_F(HistoryViewModelTest, NewRowsComeAtTheFrontAndOldOnesLeaveAtTheEnd)
{
    HistoryViewModel model(world.session, world.stats, world.clock, world.boards, world.scheduler, 4,
                           nullptr);
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    QSignalSpy resets(&model, &QAbstractItemModel::modelReset);
    QSignalSpy removed(&model, &QAbstractItemModel::rowsRemoved);
    for (int i = 1; i <= 5; ++i) {
        world.dictate(QStringLiteral("nummer %1").arg(i));
        EXPECT_EQ(model.count(), std::min(i, 4));
        EXPECT_EQ(text(model, 0, HistoryViewModel::TranscriptRole), QStringLiteral("Nummer %1").arg(i));
    }
    EXPECT_EQ(text(model, 3, HistoryViewModel::TranscriptRole), u"Nummer 2");
    EXPECT_EQ(removed.count(), 1);
    EXPECT_EQ(resets.count(), 0) << "rows that stay are not built anew";
}

TEST_F(HistoryViewModelTest, CopyingPutsTheTextAloneOnTheGeneralPasteboard)
{
    world.dictate(QStringLiteral("hei på deg"));
    world.boards.generalBoard.otherProgramWrites(
        {{{{QStringLiteral("text/html"), "<b>x</b>"}, {QStringLiteral("UTF8_STRING"), "x"}}}});
    HistoryViewModel model(world.session, world.stats, world.clock, world.boards, world.scheduler, 25,
                           nullptr);
    model.copy(0);
    ASSERT_EQ(world.boards.generalBoard.items().size(), 1);
    EXPECT_EQ(world.boards.generalBoard.items().first(), PasteboardItem::text(QStringLiteral("Hei på deg ")));
    model.copy(1);
    model.copy(-1);
    EXPECT_EQ(world.boards.generalBoard.text(), u"Hei på deg ");
}

TEST_F(HistoryViewModelTest, CopiedIsSaidForItsTime)
{
    world.dictate(QStringLiteral("hei"));
    HistoryViewModel model(world.session, world.stats, world.clock, world.boards, world.scheduler, 25,
                           nullptr);
    QSignalSpy changes(&model, &QAbstractItemModel::dataChanged);
    model.copy(0);
    EXPECT_EQ(text(model, 0, HistoryViewModel::CopyLabelRole), u"Copied");
    EXPECT_TRUE(model.data(model.index(0), HistoryViewModel::CopiedRole).toBool());
    world.scheduler.advance(1499ms);
    EXPECT_EQ(text(model, 0, HistoryViewModel::CopyLabelRole), u"Copied");
    world.scheduler.advance(1ms);
    EXPECT_EQ(text(model, 0, HistoryViewModel::CopyLabelRole), u"Copy");
    EXPECT_EQ(changes.count(), 2);
}

TEST_F(HistoryViewModelTest, CopyingTwiceKeepsCopiedShownAndTheTextThere)
{
    world.dictate(QStringLiteral("hei"));
    HistoryViewModel model(world.session, world.stats, world.clock, world.boards, world.scheduler, 25,
                           nullptr);
    model.copy(0);
    world.scheduler.advance(1000ms);
    model.copy(0);
    EXPECT_EQ(text(model, 0, HistoryViewModel::CopyLabelRole), u"Copied");
    world.scheduler.advance(1000ms);
    EXPECT_EQ(text(model, 0, HistoryViewModel::CopyLabelRole), u"Copied") << "counted from the second press";
    EXPECT_EQ(world.boards.generalBoard.text(), u"Hei ");
    world.scheduler.advance(500ms);
    EXPECT_EQ(text(model, 0, HistoryViewModel::CopyLabelRole), u"Copy");
}

TEST_F(HistoryViewModelTest, CopiedStaysWithItsTextWhenANewOneComes)
{
    world.dictate(QStringLiteral("først"));
    HistoryViewModel model(world.session, world.stats, world.clock, world.boards, world.scheduler, 1,
                           nullptr);
    HistoryViewModel all(world.session, world.stats, world.clock, world.boards, world.scheduler, 25, nullptr);
    all.copy(0);
    model.copy(0);
    world.controller.start();
    ASSERT_TRUE(world.input.push(std::vector<float>(16000, 0.5F)));
    world.controller.stop();
    UiWorld::settle();
    EXPECT_EQ(text(all, 0, HistoryViewModel::CopyLabelRole), u"Copy");
    EXPECT_EQ(text(all, 1, HistoryViewModel::CopyLabelRole), u"Copied");
    // The row that was copied has left the short list; its time ends without harm.
    world.scheduler.advance(2s);
    EXPECT_EQ(text(model, 0, HistoryViewModel::CopyLabelRole), u"Copy");
}

TEST_F(HistoryViewModelTest, ARefusedCopyDoesNotClaimToBeOne)
{
    world.dictate(QStringLiteral("hei"));
    HistoryViewModel model(world.session, world.stats, world.clock, world.boards, world.scheduler, 25,
                           nullptr);
    world.boards.generalBoard.refuseWrites();
    model.copy(0);
    EXPECT_EQ(text(model, 0, HistoryViewModel::CopyLabelRole), u"Not copied");
    EXPECT_FALSE(model.data(model.index(0), HistoryViewModel::CopiedRole).toBool());
    world.scheduler.advance(1500ms);
    EXPECT_EQ(text(model, 0, HistoryViewModel::CopyLabelRole), u"Copy");
}

} // namespace

} // namespace tulvane::test
