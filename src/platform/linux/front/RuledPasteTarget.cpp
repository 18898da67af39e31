#include <platform/linux/front/RuledPasteTarget.h>

#include <algorithm>

namespace tulvane {

PasteTarget ruledPasteTarget(const FrontProgram& program, const PasteRules& rules)
{
    if (program.classes.isEmpty())
        return {program.window, PasteSelection::both, PasteChord::shiftInsert, PasteLineBreaks::asSpaces};
    const auto rule = std::ranges::find_if(rules, [&](const PasteRule& one) {
        return program.classes.contains(one.windowClass, Qt::CaseInsensitive);
    });
    if (rule == rules.end())
        return {program.window};
    return {program.window, rule->selection, rule->chord, rule->lineBreaks};
}

} // namespace tulvane
