#include "StatusBars.h"

#include <support/Await.h>

#include <gtest/gtest.h>

namespace tulvane::test {

namespace {

using Kind = MenuEntry::Kind;

template <class Bar>
class StatusItemContract : public testing::Test {
protected:
    void show(const QList<MenuEntry>& entries = {})
    {
        m_item.setMenu(entries);
        m_item.setSymbol(QStringLiteral("mic"));
        ASSERT_TRUE(waitUntil([this] { return m_bar.hasIcon(); }));
    }
    [[nodiscard]] bool comesToShow(const QList<SeenLine>& lines, const QStringList& path = {})
    {
        return waitUntil([&] { return m_bar.lines(path) == lines; });
    }

    Bar m_bar;
    StatusItem& m_item = m_bar.item();
};

using Bars = testing::Types<FakeBar, BusBar>;
TYPED_TEST_SUITE(StatusItemContract, Bars);

MenuEntry action(const QString& text, std::function<void()> activate = [] {})
{
    return {.kind = Kind::action, .name = text, .text = text, .activate = std::move(activate)};
}

MenuEntry choice(const QString& text, bool isChecked)
{
    return {.kind = Kind::choice, .name = text, .text = text, .isChecked = isChecked, .activate = [] {}};
}

MenuEntry submenu(const QString& text, const QList<MenuEntry>& entries)
{
    return {.kind = Kind::submenu, .name = text, .text = text, .entries = entries};
}

SeenLine seenAction(const QString& text)
{
    return {text, true, false};
}

const QString start = QStringLiteral("Start");
const QString quit = QStringLiteral("Quit");

} // namespace

TYPED_TEST(StatusItemContract, NothingIsShownBeforeTheFirstSymbol)
{
    this->m_item.setDescription(QStringLiteral("Ready"));
    this->m_item.setMenu({action(quit)});
    EXPECT_FALSE(this->m_bar.hasIcon());
    this->m_item.setSymbol(QStringLiteral("mic"));
    EXPECT_TRUE(waitUntil([this] { return this->m_bar.hasIcon(); }));
}

TYPED_TEST(StatusItemContract, IsShownOnceABarHasIt)
{
    int tellings = 0;
    this->m_item.setShownHandler([&] { ++tellings; });
    EXPECT_FALSE(this->m_item.isShown());
    this->show();
    EXPECT_TRUE(waitUntil([this] { return this->m_item.isShown(); }));
    EXPECT_GT(tellings, 0);
    this->m_item.setShownHandler({});
}

TYPED_TEST(StatusItemContract, TheSymbolIsThePicture)
{
    this->show();
    const QString first = this->m_bar.picture();
    this->m_item.setSymbol(QStringLiteral("mic.fill"));
    EXPECT_TRUE(waitUntil([&] { return this->m_bar.picture() != first; }));
    this->m_item.setSymbol(QStringLiteral("mic"));
    EXPECT_TRUE(waitUntil([&] { return this->m_bar.picture() == first; }));
}

TYPED_TEST(StatusItemContract, TheDescriptionIsWhatWasSetLast)
{
    this->m_item.setDescription(QStringLiteral("Tulvane – Ready"));
    this->show();
    EXPECT_TRUE(waitUntil([this] { return this->m_bar.description() == QStringLiteral("Tulvane – Ready"); }));
    this->m_item.setDescription(QStringLiteral("Tulvane – Listening…"));
    EXPECT_TRUE(
        waitUntil([this] { return this->m_bar.description() == QStringLiteral("Tulvane – Listening…"); }));
}

TYPED_TEST(StatusItemContract, TheMenuHasEveryLineInItsPlace)
{
    this->show(
        {{.kind = Kind::label, .name = QStringLiteral("state"), .text = QStringLiteral("Ready · Alt+Space")},
         {.kind = Kind::separator, .name = QStringLiteral("line"), .text = {}},
         action(start),
         submenu(QStringLiteral("Language"),
                 {choice(QStringLiteral("English"), false), choice(QStringLiteral("Norsk"), true)})});
    EXPECT_TRUE(this->comesToShow({{QStringLiteral("Ready · Alt+Space"), false, false},
                                   {QStringLiteral("-"), false, false},
                                   seenAction(start),
                                   seenAction(QStringLiteral("Language"))}));
    EXPECT_TRUE(
        this->comesToShow({{QStringLiteral("English"), true, false}, {QStringLiteral("Norsk"), true, true}},
                          {QStringLiteral("Language")}));
}

TYPED_TEST(StatusItemContract, NoCharacterOfATextMeansAnything)
{
    const QString text = QStringLiteral("Save_this & that_&&_go");
    this->show({action(text)});
    EXPECT_TRUE(this->comesToShow({seenAction(text)})) << qPrintable(this->m_bar.lines().value(0).text);
}

TYPED_TEST(StatusItemContract, AMenuChangesInPlace)
{
    this->show({action(start), action(quit)});
    ASSERT_TRUE(this->comesToShow({seenAction(start), seenAction(quit)}));
    MenuEntry stop = action(start);
    stop.text = QStringLiteral("Stop");
    this->m_item.setMenu({stop, action(QStringLiteral("Cancel")), action(quit)});
    EXPECT_TRUE(this->comesToShow(
        {seenAction(QStringLiteral("Stop")), seenAction(QStringLiteral("Cancel")), seenAction(quit)}));
    this->m_item.setMenu({action(quit)});
    EXPECT_TRUE(this->comesToShow({seenAction(quit)}));
}

TYPED_TEST(StatusItemContract, AClickDoesWhatTheLineSaysNow)
{
    QStringList done;
    const auto note = [&done](const char* what) {
        return [&done, what] { done.append(QString::fromUtf8(what)); };
    };
    const QString more = QStringLiteral("More");
    this->show({action(start, note("first")), submenu(more, {action(quit, note("inner"))})});
    ASSERT_TRUE(this->comesToShow({seenAction(start), seenAction(more)}));
    this->m_bar.click({start});
    EXPECT_TRUE(waitUntil([&] { return done == QStringList{QStringLiteral("first")}; }));
    this->m_bar.click({more, quit});
    EXPECT_TRUE(waitUntil([&] { return done.value(1) == QStringLiteral("inner"); }));
    this->m_item.setMenu({action(start, note("second")), submenu(more, {action(quit, note("inner"))})});
    this->m_bar.click({start});
    EXPECT_TRUE(waitUntil([&] { return done.value(2) == QStringLiteral("second"); }));
    EXPECT_EQ(done.size(), 3);
}

TYPED_TEST(StatusItemContract, TheOpeningHandlerIsTheLastOne)
{
    int first = 0;
    int second = 0;
    this->m_item.setOpeningHandler([&] { ++first; });
    this->show({action(quit)});
    this->m_item.setOpeningHandler([&] { ++second; });
    this->m_bar.open();
    EXPECT_TRUE(waitUntil([&] { return second > 0; }));
    EXPECT_EQ(first, 0);
}

} // namespace tulvane::test
