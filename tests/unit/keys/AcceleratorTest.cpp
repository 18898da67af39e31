#include "KeysByName.h"

#include <platform/linux/keys/Accelerator.h>
#include <ports/KeyModifiers.h>

#include <gtest/gtest.h>

namespace tulvane {

namespace {

using test::keyByName;

struct Row {
    const char* text;
    std::optional<KeyCombination> expected;
};

TEST(Accelerator, AsQtWritesIt)
{
    for (const Row& row : {
             Row{"Alt+F2", KeyCombination{120, carbon::option}},
             Row{"Meta+Ctrl+Alt+Shift+T", KeyCombination{17, carbon::all}},
             Row{"Ctrl+PgUp", KeyCombination{116, carbon::control}},
             Row{"Ctrl+Esc", KeyCombination{53, carbon::control}},
             Row{"Ctrl+Del", KeyCombination{117, carbon::control}},
             Row{"Ctrl++", KeyCombination{24, carbon::control}},
             Row{"Meta+Space", KeyCombination{49, carbon::command}},
             Row{"Alt+Shift+Backtab", KeyCombination{48, carbon::option | carbon::shift}},
             Row{"Ctrl+Enter", KeyCombination{76, carbon::control}},
             Row{"Volume Up", KeyCombination{72, 0}},
             Row{" F4 ", KeyCombination{118, 0}},
             Row{"none", {}},
             Row{"", {}},
             Row{"Ctrl+", {}},
             Row{"Hyper+F2", {}},
             Row{"Ctrl+NoSuchKey", {}},
         })
        EXPECT_EQ(fromQtAccelerator(QString::fromUtf8(row.text), keyByName), row.expected) << row.text;
}

TEST(Accelerator, AsGtkWritesIt)
{
    for (const Row& row : {
             Row{"<Alt>F2", KeyCombination{120, carbon::option}},
             Row{"<Primary><Alt>t", KeyCombination{17, carbon::control | carbon::option}},
             Row{"<Super><Shift><Control>Page_Up",
                 KeyCombination{116, carbon::command | carbon::shift | carbon::control}},
             Row{"<Mod4>e", KeyCombination{14, carbon::command}},
             Row{"<Ctl><Shft><Mod1>e", KeyCombination{14, carbon::control | carbon::shift | carbon::option}},
             Row{"F4", KeyCombination{118, 0}},
             Row{"<Hyper>F2", {}},
             Row{"<Alt", {}},
             Row{"<Alt>", {}},
             Row{"", {}},
         })
        EXPECT_EQ(fromGtkAccelerator(QString::fromUtf8(row.text), keyByName), row.expected) << row.text;
}

TEST(Accelerator, AsOpenboxWritesIt)
{
    for (const Row& row : {
             Row{"A-space", KeyCombination{49, carbon::option}},
             Row{"C-A-S-W-t", KeyCombination{17, carbon::all}},
             Row{"Mod1-Mod4-F2", KeyCombination{120, carbon::option | carbon::command}},
             Row{"C--", KeyCombination{27, carbon::control}},
             Row{"F4", KeyCombination{118, 0}},
             Row{"H-F2", {}},
             Row{"A-NoSuchKey", {}},
             Row{"", {}},
         })
        EXPECT_EQ(fromOpenboxAccelerator(QString::fromUtf8(row.text), keyByName), row.expected) << row.text;
}

} // namespace

} // namespace tulvane
