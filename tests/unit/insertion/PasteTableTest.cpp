#include <insertion/PasteTable.h>

#include <gtest/gtest.h>

#include <algorithm>

namespace tulvane {

namespace {

TerminalWindow entryFor(const TerminalTable& table, const QString& windowClass)
{
    const auto entry = std::ranges::find(table, windowClass, &TerminalWindow::windowClass);
    return entry == table.end() ? TerminalWindow{u"none"_qs} : *entry;
}

} // namespace

TEST(PasteTable, KnowsTheCommonTerminals)
{
    const TerminalTable table = pasteTable({});
    EXPECT_EQ(
        entryFor(table, u"gnome-terminal-server"_qs),
        (TerminalWindow{u"gnome-terminal-server"_qs, PasteChord::controlShiftV, PasteSelection::clipboard}));
    EXPECT_EQ(entryFor(table, u"xterm"_qs),
              (TerminalWindow{u"xterm"_qs, PasteChord::shiftInsert, PasteSelection::primary}));
}

TEST(PasteTable, TheUsersEntriesComeFirst)
{
    const TerminalTable table = pasteTable(QVariantList{u"MyTerm"_qs, u" Other = shift+insert "_qs,
                                                        u"xterm=CTRL+V"_qs, u"third=ctrl+shift+v"_qs});
    ASSERT_GT(table.size(), 4);
    EXPECT_EQ(table.at(0),
              (TerminalWindow{u"MyTerm"_qs, PasteChord::controlShiftV, PasteSelection::clipboard}));
    EXPECT_EQ(table.at(1), (TerminalWindow{u"Other"_qs, PasteChord::shiftInsert, PasteSelection::primary}));
    EXPECT_EQ(table.at(2), (TerminalWindow{u"xterm"_qs, PasteChord::controlV, PasteSelection::clipboard}));
    EXPECT_EQ(table.at(3),
              (TerminalWindow{u"third"_qs, PasteChord::controlShiftV, PasteSelection::clipboard}));
    EXPECT_EQ(entryFor(table, u"xterm"_qs).chord, PasteChord::controlV);
}

TEST(PasteTable, EntriesThatMakeNoSenseAreLeftOut)
{
    const auto known = pasteTable({}).size();
    EXPECT_EQ(pasteTable(QVariantList{u""_qs, u"  "_qs, u"=ctrl+v"_qs, u"a=hyper+x"_qs, 7.5}).size(), known);
    EXPECT_EQ(pasteTable(u"not a list"_qs).size(), known);
    EXPECT_EQ(pasteTable(true).size(), known);
}

} // namespace tulvane
