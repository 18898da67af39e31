#include "DataControlWorld.h"

#include <support/Signals.h>

#include <QElapsedTimer>
#include <QThread>

#include <gtest/gtest.h>

#include <csignal>
#include <optional>

namespace tulvane::test {

namespace {

QByteArray pattern(qsizetype size)
{
    QByteArray bytes(size, Qt::Uninitialized);
    for (qsizetype index = 0; index < size; ++index)
        bytes[index] = static_cast<char>(index * 31 + index / 251);
    return bytes;
}

template <class World>
class DataControlPasteboardTest : public testing::Test {
protected:
    void SetUp() override
    {
        if constexpr (requires { World::desktopKind; }) {
            TULVANE_NEEDS(World::desktopKind);
        }
        m_world.emplace();
    }
    Pasteboard& board() { return m_world->board(); }
    /// What another program offers.
    void copy(const QByteArray& bytes, const QString& type)
    {
        QProcess& copier =
            m_world->desktop().start(QStringLiteral("/usr/bin/wl-copy"),
                                     {QStringLiteral("--foreground"), QStringLiteral("--type"), type});
        const qint64 before = board().changeCount();
        copier.write(bytes);
        copier.closeWriteChannel();
        ASSERT_TRUE(waitUntil([&] { return board().changeCount() > before; }));
        m_copier = &copier;
    }

    std::optional<World> m_world; ///< made once it is known that its packages are there
    QProcess* m_copier = nullptr;
};

using Worlds = testing::Types<SwayWorld, KWinWorld, ExtWorld, WlrWorld>;
TYPED_TEST_SUITE(DataControlPasteboardTest, Worlds);

} // namespace

TYPED_TEST(DataControlPasteboardTest, PutsALargePictureBackByteForByte)
{
    const QByteArray picture = pattern(8 * 1024 * 1024 + 13);
    this->copy(picture, u"image/png"_qs);
    const PasteboardContents saved = await(this->board().contents());
    ASSERT_TRUE(saved.complete);
    ASSERT_EQ(saved.items.size(), 1);
    this->board().replace({PasteboardItem::text(u"between"_qs)});
    const qint64 own = this->board().ownChangeCount();
    EXPECT_TRUE(this->board().replaceUnlessChanged(saved.items, own));
    EXPECT_EQ(this->m_world->reader().read("-n -t image/png"), picture);
}

TYPED_TEST(DataControlPasteboardTest, AReadBeforeTheKeysIsNoPaste)
{
    this->board().replaceFor({PasteboardItem::text(u"a"_qs)}, this->m_world->front());
    EXPECT_EQ(this->m_world->reader().read(), "a");
    EXPECT_EQ(this->board().reading(), Pasteboard::Reading::unread);
    this->m_world->frontReads();
    EXPECT_TRUE(waitUntil([&] { return this->board().reading() == Pasteboard::Reading::read; }));
}

TYPED_TEST(DataControlPasteboardTest, AnswersReadersWhileTheMainThreadIsBusy)
{
    this->board().replace({PasteboardItem::text(u"«æøå»"_qs)});
    const QString file = this->m_world->desktop().home() + u"/busy"_qs;
    this->m_world->desktop().start(u"/bin/sh"_qs,
                                   {u"-c"_qs, u"wl-paste -n > \"$0.part\"; mv \"$0.part\" \"$0\""_qs, file});
    QElapsedTimer clock;
    for (clock.start(); clock.elapsed() < 5000 && !QFile::exists(file);)
        QThread::msleep(5); // no event loop
    QFile seen(file);
    ASSERT_TRUE(seen.open(QIODevice::ReadOnly));
    EXPECT_EQ(seen.readAll(), u"«æøå»"_qs.toUtf8());
}

TYPED_TEST(DataControlPasteboardTest, AFrozenOwnerCostsNoMoreThanItsLimit)
{
    this->copy("text", u"text/plain"_qs);
    const qint64 frozen = this->m_copier->processId();
    sendSignal(frozen, SIGSTOP);
    QElapsedTimer clock;
    clock.start();
    const auto reading = this->board().contents();
    EXPECT_LT(clock.elapsed(), 500);
    const PasteboardContents contents = await(reading);
    sendSignal(frozen, SIGCONT);
    EXPECT_FALSE(contents.complete);
    EXPECT_LT(clock.elapsed(), 7500);
}

TYPED_TEST(DataControlPasteboardTest, AReaderThatGoesAwayInTheMiddleDisturbsNothing)
{
    const QByteArray large = pattern(4 * 1024 * 1024);
    this->board().replace({{{{u"image/png"_qs, large}}}});
    (void)this->m_world->desktop().run(
        u"/bin/sh"_qs, {u"-c"_qs, u"wl-paste -n -t image/png | head -c 100000 > /dev/null"_qs});
    EXPECT_EQ(this->m_world->reader().read("-n -t image/png"), large);
}

TYPED_TEST(DataControlPasteboardTest, TheTextSelectedLastIsAPasteboardOfItsOwn)
{
    Pasteboard& primary = this->m_world->boards().of(PasteSelection::primary);
    this->board().replace({PasteboardItem::text(u"copied"_qs)});
    EXPECT_TRUE(primary.replace({PasteboardItem::text(u"selected"_qs)}));
    EXPECT_EQ(this->m_world->reader().read("-n -p"), "selected");
    EXPECT_EQ(this->m_world->reader().read(), "copied");
}

TYPED_TEST(DataControlPasteboardTest, AnUnknownProgramGetsBothAndBothAreRestored)
{
    Pasteboard& primary = this->m_world->boards().of(PasteSelection::primary);
    this->board().replace({PasteboardItem::text(u"copied"_qs)});
    primary.replace({PasteboardItem::text(u"selected"_qs)});
    this->m_world->scriptedFront().program = {};
    const PasteTarget target = this->m_world->front();
    EXPECT_EQ(target.chord, PasteChord::shiftInsert);
    Pasteboard& both = this->m_world->boards().of(target.selection);
    const PasteboardContents saved = await(both.contents());
    both.replaceFor({PasteboardItem::text(u"dictated"_qs)}, target);
    this->m_world->boards().expectReader(target);
    EXPECT_EQ(this->m_world->reader().read("-n -p"), "dictated");
    EXPECT_TRUE(waitUntil([&] { return both.reading() == Pasteboard::Reading::read; }));
    EXPECT_EQ(this->m_world->reader().read(), "dictated");
    EXPECT_TRUE(both.replaceUnlessChanged(saved.items, both.ownChangeCount()));
    EXPECT_EQ(this->m_world->reader().read("-n -p"), "selected");
    EXPECT_EQ(this->m_world->reader().read(), "copied");
}

TYPED_TEST(DataControlPasteboardTest, ACompositorThatGoesTakesNothingButThePasteboardWithIt)
{
    const auto reading = this->board().contents();
    this->m_world->desktop().stop();
    (void)await(reading);
    EXPECT_FALSE(this->board().replace({PasteboardItem::text(u"a"_qs)}));
    EXPECT_TRUE(await(this->board().contents()).items.isEmpty());
    this->board().clear();
    (void)this->board().changeCount();
}

} // namespace tulvane::test
