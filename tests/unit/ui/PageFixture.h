#pragma once

#include <support/ui/UiWorld.h>
#include <support/ui/WindowProbe.h>
#include <ui/look/Look.h>
#include <ui/windows/SettingsWindowController.h>

#include <QAccessible>
#include <QQuickItem>
#include <QQuickView>

#include <gtest/gtest.h>

#include <memory>

namespace tulvane::test {

/// A page of the main window, looked at and worked like a user does.
class PageFixture : public ::testing::Test {
protected:
    WindowProbe& open(SettingsTab page, QSize size = SettingsWindowController::initial)
    {
        world.presentation.setReducedMotion(true);
        world.ui.showPage(page);
        window().resize(size);
        m_probe = std::make_unique<WindowProbe>(window());
        return *m_probe;
    }
    [[nodiscard]] QQuickView& window() { return *world.ui.settingsWindow().window(); }
    [[nodiscard]] SettingsTab shownPage() { return world.ui.settingsWindow().selection().tab(); }
    /// What a screen reader calls the control.
    [[nodiscard]] static QString nameOf(QQuickItem& item)
    {
        QAccessibleInterface* const reader = QAccessible::queryAccessibleInterface(&item);
        return reader ? reader->text(QAccessible::Name) : QString();
    }
    /// The name of the control that has the keyboard.
    [[nodiscard]] QString focused()
    {
        const QQuickItem* const item = window().activeFocusItem();
        return item ? item->objectName() : QString();
    }
    /// The flaws of a page in both languages at the smallest size and the first one.
    [[nodiscard]] static QStringList flawsIn(SettingsTab page, const std::function<void(UiWorld&)>& prepare)
    {
        QStringList flaws;
        for (const AppLanguage language : allCases<AppLanguage>()) {
            UiWorld world(language);
            world.presentation.setReducedMotion(true);
            prepare(world);
            world.ui.showPage(page);
            QQuickView& window = *world.ui.settingsWindow().window();
            for (const QSize size : {SettingsWindowController::smallest, SettingsWindowController::initial}) {
                // As high as it takes to see all of it.
                window.resize(size.width(), 2400);
                for (const QString& flaw : WindowProbe(window).layoutFlaws())
                    flaws.append(rawValue(language) + u' ' + QString::number(size.width()) + u": " + flaw);
            }
        }
        return flaws;
    }

    UiWorld world;

private:
    std::unique_ptr<WindowProbe> m_probe;
};

} // namespace tulvane::test
