#pragma once

#include <support/ui/UiWorld.h>
#include <support/ui/WindowProbe.h>
#include <ui/indicator/HUDController.h>

#include <QQuickItem>
#include <QQuickView>

#include <gtest/gtest.h>

namespace tulvane::test {

/// The indicator over the whole program, with screens that the test makes up.
class IndicatorFixture : public testing::Test {
protected:
    IndicatorFixture() { m_world.indicator.target = &m_indicator; }
    ~IndicatorFixture() override { m_world.indicator.target = nullptr; }

    void show(const Phase& phase)
    {
        m_indicator.setPhase(phase);
        m_indicator.show();
        UiWorld::settle();
    }
    void still() { m_world.presentation.setReducedMotion(true); }
    [[nodiscard]] bool isVisible() const { return m_indicator.panel() && m_indicator.panel()->isVisible(); }
    [[nodiscard]] double opacity() const { return m_panel ? m_panel->opacities().last() : -1; }
    [[nodiscard]] QQuickItem& item(const char* name)
    {
        return WindowProbe(*m_indicator.panel()).item(QString::fromLatin1(name));
    }
    [[nodiscard]] QStringList texts() { return WindowProbe(*m_indicator.panel()).texts(); }
    /// What the indicator's window holds, with its alpha, which this platform's own windows have none of.
    [[nodiscard]] QImage picture() { return pictureOf(*m_indicator.panel()->rootObject()); }
    void advance(int milliseconds) { m_world.scheduler.advance(std::chrono::milliseconds(milliseconds)); }

    UiWorld m_world;
    ScreenLayout m_screens{{{{0, 0, 1440, 900}, {0, 0, 1440, 860}}}, {700, 400}};
    FakeIndicatorPanel* m_panel = nullptr;
    int m_made = 0;
    bool m_startsBlended = true;
    IndicatorSurface* m_surface = nullptr; ///< the panel's own, where the window cannot be one
    HUDController m_indicator{{.engine = [this]() -> QQmlEngine& { return m_world.ui.engine(); },
                               .makePanel =
                                   [this] {
                                       auto made = std::make_unique<FakeIndicatorPanel>();
                                       m_panel = made.get();
                                       m_panel->setBlended(m_startsBlended);
                                       m_panel->ownSurface = m_surface;
                                       ++m_made;
                                       return made;
                                   },
                               .scheduler = m_world.scheduler,
                               .clock = m_world.clock,
                               .screens = [this] { return m_screens; }}};
};

} // namespace tulvane::test
