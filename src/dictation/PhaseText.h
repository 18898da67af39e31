#pragma once

#include <base/Translate.h>
#include <dictation/Phase.h>

namespace tulvane {

/// What the user reads of a phase, in the language of the interface: the same in the indicator, on the home
/// page and in the menu. An idle phase has none.
[[nodiscard]] inline QString textOf(const Phase& phase)
{
    switch (phase.kind) {
    case Phase::Kind::idle:
        return {};
    case Phase::Kind::recording:
        return translate("Listening…");
    case Phase::Kind::transcribing:
        return translate("Transcribing…");
    case Phase::Kind::inserting:
        return translate("Inserting…");
    case Phase::Kind::notice:
    case Phase::Kind::error:
        return phase.text;
    }
    Q_UNREACHABLE();
}

/// The first line of it, for a place with room for one.
[[nodiscard]] inline QString lineOf(const Phase& phase)
{
    return textOf(phase).section(u'\n', 0, 0);
}

} // namespace tulvane
