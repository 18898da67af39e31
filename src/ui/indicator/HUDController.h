#pragma once

#include <base/Scheduler.h>
#include <dictation/Indicator.h>
#include <ports/IndicatorPanel.h>
#include <ui/indicator/Fade.h>
#include <ui/indicator/HUDModel.h>
#include <ui/indicator/IndicatorPicture.h>
#include <ui/indicator/RecordingTime.h>
#include <ui/indicator/ScreenLayout.h>

#include <QObject>
#include <QSize>

#include <chrono>
#include <functional>
#include <memory>

class QQmlEngine;
class QQuickView;

namespace tulvane {

class Clock;

/// Owns the indicator's window, or where the desktop takes pictures in its stead, what draws those: built
/// when it is first shown, kept from then on, on the screen only while there is something to show. Main
/// thread.
class HUDController final : public QObject, public Indicator {
    Q_OBJECT

public:
    static constexpr QSize contentSize{316, 104};
    static constexpr std::chrono::milliseconds fadeInTime{150};
    static constexpr std::chrono::milliseconds fadeOutTime{200};

    /// What the indicator stands on; the scheduler and the clock outlive it.
    struct Dependencies {
        std::function<QQmlEngine&()> engine;                        ///< asked for when the window is built
        std::function<std::unique_ptr<IndicatorPanel>()> makePanel; ///< likewise
        Scheduler& scheduler;
        const Clock& clock;
        std::function<ScreenLayout()> screens = &ScreenLayout::current; ///< asked for at every show
    };

    explicit HUDController(Dependencies neighbours);
    ~HUDController() override;

    void setPhase(const Phase& phase) override;
    void setLevel(float level) override { m_model.setLevel(level); }
    void show() override;
    void hide(bool animated) override;
    /// How long a recording lasts at most, asked for when one begins.
    void setLongestRecording(std::function<std::chrono::seconds()> longest);
    /// Takes the window down for good; nothing is shown from then on.
    void close();

    [[nodiscard]] HUDModel& model() { return m_model; }
    /// Null until the indicator has been shown for the first time, and where there is no window.
    [[nodiscard]] QQuickView* panel() const { return m_window.get(); }

private Q_SLOTS:
    void cutToOutline();

private:
    void make();
    void makeWindow();
    void makePicture(IndicatorSurface& surface);
    [[nodiscard]] bool isOnScreen() const;
    void applyOpacity(double opacity);
    void place();
    void appear();
    void moveSurface();
    void remove();

    Dependencies m_dependencies;
    HUDModel m_model;
    std::unique_ptr<QQuickView> m_window;
    std::unique_ptr<IndicatorPanel> m_panel;
    std::unique_ptr<IndicatorPicture> m_picture; ///< in the window's stead
    bool m_isPictureShown = false;
    bool m_isPlaceOld = true; ///< a dictation has begun since it was last shown
    RecordingTime m_time;
    std::function<std::chrono::seconds()> m_longest = [] { return std::chrono::seconds(300); };
    Fade m_fade;
    std::unique_ptr<Scheduler::Token> m_hideTask; ///< takes the window away at the end of its fade
    bool m_isClosed = false;
};

} // namespace tulvane
