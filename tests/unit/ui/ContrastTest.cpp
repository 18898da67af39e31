#include <support/ui/UiWorld.h>
#include <ui/look/Look.h>
#include <ui/windows/SettingsWindowController.h>

#include <QColor>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickView>

#include <gtest/gtest.h>

#include <cmath>

namespace tulvane::test {

namespace {

/// As the web's accessibility guidelines define it: 1 for equal colours, 21 for black on white.
double luminance(const QColor& color)
{
    const auto linear = [](double part) {
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double contrast(const QColor& a, const QColor& b)
{
    const double light = std::max(luminance(a), luminance(b));
    const double dark = std::min(luminance(a), luminance(b));
    return (light + 0.05) / (dark + 0.05);
}

struct Pair {
    const char* ink;
    const char* ground;
    double least = 4.5;
};

constexpr std::array pairs{
    Pair{"text", "window"},
    Pair{"text", "sidebar"},
    Pair{"text", "card"},
    Pair{"text", "field"},
    Pair{"text", "popup"},
    Pair{"text", "hover"},
    Pair{"text", "pressed"},
    Pair{"secondaryText", "window"},
    Pair{"secondaryText", "sidebar"},
    Pair{"secondaryText", "card"},
    Pair{"secondaryText", "popup"},
    Pair{"secondaryText", "hover"},
    Pair{"disabledText", "card"},
    Pair{"disabledText", "field"},
    Pair{"accent", "window"},
    Pair{"accent", "card"},
    Pair{"accent", "hover"},
    Pair{"accentInk", "accent"},
    Pair{"accentInk", "accentHover"},
    Pair{"accentInk", "accentPressed"},
    Pair{"accentSoftInk", "accentSoft"},
    Pair{"text", "accentSoft"},
    Pair{"accent", "accentSoft"},
    Pair{"text", "successSoft"},
    Pair{"text", "warningSoft"},
    Pair{"text", "dangerSoft"},
    Pair{"success", "card"},
    Pair{"success", "successSoft"},
    Pair{"warning", "card"},
    Pair{"warning", "warningSoft"},
    Pair{"danger", "card"},
    Pair{"danger", "dangerSoft"},
    Pair{"dangerInk", "danger"},
    // What is no text: outlines of controls and the focus ring.
    Pair{"controlBorder", "card", 3},
    Pair{"controlBorder", "window", 3},
    Pair{"accent", "sidebar", 3},
    Pair{"bar", "card", 3},
    Pair{"bar", "hover", 3},
};

TEST(ContrastTest, EveryInkIsReadableOnItsGroundInBothAppearances)
{
    UiWorld world;
    world.ui.showPage(SettingsTab::about);
    QQmlEngine* const engine = world.ui.settingsWindow().window()->engine();
    QQmlComponent component(engine);
    component.setData("import QtQuick\nimport Tulvane\nQtObject { readonly property var theme: Theme }",
                      QUrl());
    const std::unique_ptr<QObject> holder(component.create());
    ASSERT_TRUE(holder) << qPrintable(component.errorString());
    const auto* const theme = holder->property("theme").value<QObject*>();
    ASSERT_NE(theme, nullptr);
    for (const bool dark : {false, true}) {
        Look::shared().setDark(dark);
        for (const Pair& pair : pairs) {
            const QVariant ink = theme->property(pair.ink);
            const QVariant ground = theme->property(pair.ground);
            ASSERT_TRUE(ink.isValid() && ground.isValid()) << pair.ink << " on " << pair.ground;
            EXPECT_GE(contrast(ink.value<QColor>(), ground.value<QColor>()), pair.least)
                << pair.ink << " on " << pair.ground << (dark ? ", dark" : ", light");
        }
    }
    Look::shared().setDark(false);
}

} // namespace

} // namespace tulvane::test
