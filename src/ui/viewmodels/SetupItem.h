#pragma once

#include <base/Translate.h>

#include <QString>

#include <functional>

namespace tulvane {

/// One item of the setup checklist, as it stands at the moment at which the list is made.
struct SetupItem {
    QString id; ///< stable: "mic"
    QString title;
    QString symbol;
    bool isDone = false;
    bool isEssential = false;
    std::function<void()> action; ///< what clicking the item does
};

enum class SetupStepState { done, todo, optional };

/// What the user reads of it.
[[nodiscard]] inline QString label(SetupStepState state)
{
    switch (state) {
    case SetupStepState::done:
        return translate("Done");
    case SetupStepState::todo:
        return translate("To do");
    case SetupStepState::optional:
        return translate("Optional");
    }
    Q_UNREACHABLE();
}

/// One step of the window that leads a new user to a working setup.
struct SetupStep {
    int number = 0; ///< from 1
    QString title;
    QString symbol;
    SetupStepState state = SetupStepState::todo;
    std::function<void()> action; ///< what leads towards "done"
};

} // namespace tulvane
