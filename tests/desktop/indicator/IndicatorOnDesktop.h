#pragma once

#include "../resident/ResidentDesktop.h"

#include <support/Await.h>
#include <support/ServerView.h>

#include <gtest/gtest.h>

namespace tulvane::test {

/// The resident program in English, and its indicator as the X server has it.
class IndicatorOnDesktop : public testing::Test {
protected:
    IndicatorOnDesktop()
    {
        for (const char* setting : {"appLanguage en", "hasCompletedOnboarding true"}) {
            if (m_here.tulvane(words("settings set") + words(setting)).status != 0)
                throw std::runtime_error("a setting was refused");
        }
    }

    [[nodiscard]] std::optional<xcb_window_t> indicator() const { return m_view.unmanaged({316, 104}); }
    [[nodiscard]] bool waitForIndicator() const
    {
        return waitUntil([&] { return indicator().has_value(); });
    }
    [[nodiscard]] bool waitForNoIndicator() const
    {
        return waitUntil([&] { return !indicator().has_value(); });
    }
    /// Whether it has come all the way out of its fade.
    [[nodiscard]] bool isOpaque() const
    {
        return indicator() && m_view.numbers(*indicator(), "_NET_WM_WINDOW_OPACITY").value(0, ~0U) == ~0U;
    }
    void ask(const char* command)
    {
        const auto run = m_here.tulvane(words(command));
        EXPECT_EQ(run.status, 0) << command << ": " << qPrintable(run.err);
    }
    [[nodiscard]] QString message() const { return m_here.status()[QStringLiteral("message")].toString(); }
    /// Something that fills the screen below the indicator.
    xcb_window_t openFilm(quint32 color = 0x3366cc)
    {
        const xcb_window_t film =
            m_view.show({.place = QRect(QPoint(), m_view.size()), .color = color, .isFullScreen = true});
        EXPECT_TRUE(waitUntil([&] { return m_view.isViewable(film) && m_view.active() == film; }));
        return film;
    }

    ResidentDesktop m_here;
    ServerView m_view{m_here.desktop.display()};
};

} // namespace tulvane::test
