#include <platform/linux/desktop/shell/TrayMenu.h>
#include <support/Await.h>

#include <QAction>
#include <QActionGroup>

#include <gtest/gtest.h>

namespace tulvane::test {

namespace {

using Kind = MenuEntry::Kind;

MenuEntry entry(Kind kind, const QString& name, const QString& text = {})
{
    return {.kind = kind, .name = name, .text = text};
}

MenuEntry choice(const QString& name, bool isChecked)
{
    return {.kind = Kind::choice, .name = name, .text = name, .isChecked = isChecked};
}

QStringList texts(const QMenu& menu)
{
    QStringList list;
    for (const QAction* action : menu.actions())
        list.append(action->isSeparator() ? QStringLiteral("-") : action->text());
    return list;
}

} // namespace

TEST(TrayMenuTest, ShowsEachKindOfLine)
{
    TrayMenu menu;
    MenuEntry languages = entry(Kind::submenu, u"language"_qs, u"Language"_qs);
    languages.entries = {choice(u"no"_qs, true), choice(u"en"_qs, false)};
    menu.setEntries({entry(Kind::label, u"status"_qs, u"Ready"_qs), entry(Kind::separator, u"one"_qs),
                     entry(Kind::action, u"quit"_qs, u"Quit"_qs), languages});
    EXPECT_EQ(texts(menu.menu()), QStringList({u"Ready"_qs, u"-"_qs, u"Quit"_qs, u"Language"_qs}));
    const QList<QAction*> actions = menu.menu().actions();
    EXPECT_FALSE(actions[0]->isEnabled());
    EXPECT_TRUE(actions[2]->isEnabled());
    const QList<QAction*> inner = actions[3]->menu()->actions();
    ASSERT_EQ(inner.size(), 2);
    EXPECT_TRUE(inner[0]->isChecked());
    EXPECT_FALSE(inner[1]->isChecked());
    EXPECT_TRUE(inner[0]->actionGroup() && inner[0]->actionGroup()->isExclusive());
}

TEST(TrayMenuTest, ALineThatStaysIsTheSameLine)
{
    TrayMenu menu;
    menu.setEntries({entry(Kind::label, u"status"_qs, u"Ready"_qs),
                     entry(Kind::action, u"dictate"_qs, u"Start"_qs),
                     entry(Kind::action, u"quit"_qs, u"Quit"_qs)});
    const QList<QAction*> before = menu.menu().actions();
    menu.setEntries(
        {entry(Kind::label, u"status"_qs, u"Listening"_qs), entry(Kind::action, u"dictate"_qs, u"Stop"_qs),
         entry(Kind::action, u"cancel"_qs, u"Cancel"_qs), entry(Kind::action, u"quit"_qs, u"Quit"_qs)});
    EXPECT_EQ(texts(menu.menu()), QStringList({u"Listening"_qs, u"Stop"_qs, u"Cancel"_qs, u"Quit"_qs}));
    EXPECT_EQ(menu.menu().actions().value(0), before[0]);
    EXPECT_EQ(menu.menu().actions().value(1), before[1]);
    EXPECT_EQ(menu.menu().actions().value(3), before[2]);
    menu.setEntries({entry(Kind::action, u"quit"_qs, u"Quit"_qs)});
    EXPECT_EQ(menu.menu().actions(), QList<QAction*>({before[2]}));
}

TEST(TrayMenuTest, LinesMayChangePlacesAndKinds)
{
    TrayMenu menu;
    menu.setEntries({entry(Kind::action, u"a"_qs, u"a"_qs), entry(Kind::action, u"b"_qs, u"b"_qs),
                     entry(Kind::separator, u"c"_qs)});
    menu.setEntries({entry(Kind::label, u"b"_qs, u"b"_qs), entry(Kind::separator, u"c"_qs),
                     entry(Kind::action, u"a"_qs, u"a"_qs)});
    EXPECT_EQ(texts(menu.menu()), QStringList({u"b"_qs, u"-"_qs, u"a"_qs}));
    EXPECT_FALSE(menu.menu().actions()[0]->isEnabled());
}

TEST(TrayMenuTest, AClickDoesWhatTheLineSaysNowAndOnce)
{
    TrayMenu menu;
    int first = 0;
    int second = 0;
    MenuEntry quit = entry(Kind::action, u"quit"_qs, u"Quit"_qs);
    quit.activate = [&first] { ++first; };
    menu.setEntries({quit});
    quit.activate = [&second] { ++second; };
    menu.setEntries({quit});
    menu.menu().actions()[0]->trigger();
    EXPECT_EQ(second, 0); // not before the menu has closed
    QCoreApplication::processEvents();
    EXPECT_EQ(first, 0);
    EXPECT_EQ(second, 1);
}

TEST(TrayMenuTest, AClickMayChangeTheMenu)
{
    TrayMenu menu;
    MenuEntry quit = entry(Kind::action, u"quit"_qs, u"Quit"_qs);
    quit.activate = [&menu] { menu.setEntries({}); };
    menu.setEntries({quit});
    menu.menu().actions()[0]->trigger();
    EXPECT_TRUE(waitUntil([&menu] { return menu.menu().isEmpty(); }));
}

TEST(TrayMenuTest, WhatIsChosenElsewhereIsShown)
{
    TrayMenu menu;
    MenuEntry languages = entry(Kind::submenu, u"language"_qs, u"Language"_qs);
    languages.entries = {choice(u"no"_qs, true), choice(u"en"_qs, false)};
    menu.setEntries({languages});
    languages.entries = {choice(u"no"_qs, false), choice(u"en"_qs, true)};
    menu.setEntries({languages});
    const QList<QAction*> inner = menu.menu().actions()[0]->menu()->actions();
    EXPECT_FALSE(inner[0]->isChecked());
    EXPECT_TRUE(inner[1]->isChecked());
}

TEST(TrayMenuTest, NoCharacterOfATextIsAMark)
{
    EXPECT_EQ(TrayMenu::written(u"fisk & vilt & a_b"_qs, TrayMenu::DrawnBy::us), u"fisk && vilt && a_b"_qs);
    EXPECT_EQ(TrayMenu::written(u"a_b"_qs, TrayMenu::DrawnBy::desktop), u"a__b"_qs);
    EXPECT_EQ(TrayMenu::written(u"fisk & vilt & a_b"_qs, TrayMenu::DrawnBy::desktop),
              u"&\u200Bfisk & vilt & a__b"_qs);
    EXPECT_EQ(TrayMenu::written(u"Quit Tulvane"_qs, TrayMenu::DrawnBy::desktop), u"Quit Tulvane"_qs);
}

} // namespace tulvane::test
