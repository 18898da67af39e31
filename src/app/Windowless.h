#pragma once

#include <base/Log.h>
#include <dictation/Indicator.h>

namespace tulvane {

/// The indicator of a program without windows: shows nothing.
class WindowlessIndicator final : public Indicator {
public:
    void setPhase(const Phase&) override {}
    void setLevel(float) override {}
    void show() override {}
    void hide(bool) override {}
};

/// The windows of a program without windows: the log says where to look instead.
class WindowlessWindows final : public Windows {
public:
    void showOnboarding() override
    {
        qCWarning(lcApp, "Not everything is set up; `tulvane doctor` says what is missing");
    }
    void showPage(SettingsTab) override {}
};

} // namespace tulvane
