#include <insertion/PasteTable.h>

#include <gtest/gtest.h>

#include <algorithm>

namespace tulvane {

namespace {

PasteRule entryFor(const PasteRules& table, const QString& windowClass)
{
    const auto entry = std::ranges::find(table, windowClass, &PasteRule::windowClass);
    return entry == table.end() ? PasteRule{u"none"_qs} : *entry;
}

} // namespace

TEST(PasteTable, KnowsTheCommonTerminals)
{
    const PasteRules table = pasteTable({});
    EXPECT_EQ(entryFor(table, u"gnome-terminal-server"_qs),
              (PasteRule{u"gnome-terminal-server"_qs, PasteChord::controlShiftV, PasteSelection::clipboard}));
    EXPECT_EQ(entryFor(table, u"xterm"_qs),
              (PasteRule{u"xterm"_qs, PasteChord::shiftInsert, PasteSelection::primary}));
}

TEST(PasteTable, TheUsersEntriesComeFirst)
{
    const PasteRules table = pasteTable(QVariantList{u"MyTerm"_qs, u" Other = shift+insert "_qs,
                                                     u"xterm=CTRL+V"_qs, u"third=ctrl+shift+v"_qs});
    ASSERT_GT(table.size(), 4);
    EXPECT_EQ(table.at(0), (PasteRule{u"MyTerm"_qs, PasteChord::controlShiftV, PasteSelection::clipboard}));
    EXPECT_EQ(table.at(1), (PasteRule{u"Other"_qs, PasteChord::shiftInsert, PasteSelection::primary}));
    EXPECT_EQ(table.at(2), (PasteRule{u"xterm"_qs, PasteChord::controlV, PasteSelection::clipboard}));
    EXPECT_EQ(table.at(3), (PasteRule{u"third"_qs, PasteChord::controlShiftV, PasteSelection::clipboard}));
    EXPECT_EQ(entryFor(table, u"xterm"_qs).chord, PasteChord::controlV);
}

TEST(PasteTable, KnowsEmacsWhichIsNoTerminal)
{
    EXPECT_EQ(
        entryFor(pasteTable({}), u"emacs"_qs),
        (PasteRule{u"emacs"_qs, PasteChord::controlY, PasteSelection::clipboard, PasteLineBreaks::kept}));
    EXPECT_EQ(entryFor(pasteTable({}), u"cool-retro-term"_qs),
              (PasteRule{u"cool-retro-term"_qs, PasteChord::controlShiftV, PasteSelection::clipboard}));
}

TEST(PasteTable, AnyChordFromEitherSelection)
{
    const std::pair<QString, PasteRule> entries[]{
        {u"a=alt+super+7"_qs, {u"a"_qs, {PasteChord::alt | PasteChord::super, u"7"_qs}}},
        {u"a=primary:ctrl+v"_qs, {u"a"_qs, PasteChord::controlV, PasteSelection::primary}},
        {u"a=clipboard:shift+insert"_qs, {u"a"_qs, PasteChord::shiftInsert, PasteSelection::clipboard}},
        {u"a= Primary : Shift + Insert"_qs, {u"a"_qs, PasteChord::shiftInsert, PasteSelection::primary}},
        {u"a=F12"_qs, {u"a"_qs, {0, u"f12"_qs}}},
        {u"a=insert"_qs, {u"a"_qs, {0, u"insert"_qs}}},
        {u"Emacs=ctrl+shift+y"_qs,
         {u"Emacs"_qs,
          {PasteChord::control | PasteChord::shift, u"y"_qs},
          PasteSelection::clipboard,
          PasteLineBreaks::kept}},
    };
    for (const auto& [entry, rule] : entries)
        EXPECT_EQ(pasteTable(QVariantList{entry}).first(), rule) << entry.toStdString();
}

TEST(PasteTable, NamesEveryEntryThatMakesNoSense)
{
    for (const char* entry : {"", "=ctrl+v", "a=", "a=v", "a=shift+v", "a=ctrl+", "a=ctrl", "a=hyper+x",
                              "a=f13", "a=ctrl+vv", "a=secondary:ctrl+v", "a=:ctrl+v"}) {
        const QStringList problems =
            pasteTableProblems(QVariantList{u"good=ctrl+v"_qs, QString::fromLatin1(entry)});
        ASSERT_EQ(problems.size(), 1) << entry;
        EXPECT_TRUE(problems.first().contains(terminalWindowClassesKey));
        EXPECT_TRUE(problems.first().contains(QString::fromLatin1(entry)));
    }
    EXPECT_EQ(pasteTableProblems(u"xterm=ctrl+v"_qs).size(), 1);
    EXPECT_EQ(pasteTableProblems(QVariantList{7.5}).size(), 1);
    EXPECT_TRUE(pasteTableProblems({}).isEmpty());
    EXPECT_TRUE(pasteTableProblems(QVariantList{u"term"_qs, u"b=primary:f5"_qs}).isEmpty());
}

TEST(PasteTable, EntriesThatMakeNoSenseAreLeftOut)
{
    const auto known = pasteTable({}).size();
    EXPECT_EQ(pasteTable(QVariantList{u""_qs, u"  "_qs, u"=ctrl+v"_qs, u"a=hyper+x"_qs, 7.5}).size(), known);
    EXPECT_EQ(pasteTable(u"not a list"_qs).size(), known);
    EXPECT_EQ(pasteTable(true).size(), known);
}

} // namespace tulvane
