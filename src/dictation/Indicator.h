#pragma once

#include <dictation/Phase.h>
#include <dictation/SettingsTab.h>

namespace tulvane {

/// The on-screen indicator as the controller drives it. Main thread.
class Indicator {
public:
    Indicator() = default;
    Indicator(const Indicator&) = delete;
    Indicator& operator=(const Indicator&) = delete;
    virtual ~Indicator() = default;

    virtual void setPhase(const Phase& phase) = 0;
    /// The microphone's level, 0 to 1.
    virtual void setLevel(float level) = 0;
    virtual void show() = 0;
    /// `animated`: it fades out; otherwise it is gone at once.
    virtual void hide(bool animated) = 0;
};

/// The program's windows as the controller opens them. Main thread.
class Windows {
public:
    Windows() = default;
    Windows(const Windows&) = delete;
    Windows& operator=(const Windows&) = delete;
    virtual ~Windows() = default;

    virtual void showOnboarding() = 0;
    /// The main window, on this page, in front and with the focus.
    virtual void showPage(SettingsTab page) = 0;
};

} // namespace tulvane
