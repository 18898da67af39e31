#pragma once

#include <dictation/SettingsTab.h>
#include <ports/GlobalHotkeys.h>

#include <QPoint>
#include <QString>
#include <QStringList>

class QQuickItem;
class QQuickWindow;

namespace tulvane::test {

class UiWorld;

/// Looks at a window as a user and a screen reader do, and works its controls by real input events. A control
/// is named by its `objectName`. Throws std::runtime_error when there is no such visible control.
class WindowProbe final {
public:
    explicit WindowProbe(QQuickWindow& window);

    /// The visible item of that name, also in an open popup.
    [[nodiscard]] QQuickItem& item(const QString& name) const;
    [[nodiscard]] bool has(const QString& name) const;

    /// Presses and releases the left button in the item's middle, scrolled into view first.
    void click(const QString& name);
    void click(QQuickItem& item);
    /// Scrolls whatever scrolls to this distance from its top; false when it was as far already.
    bool scrollTo(qreal y);
    /// Into whatever has the focus.
    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void type(const QString& text);
    /// A key with the numbers that the window system gives it, into whatever has the focus.
    enum class Press { first, repeated };
    void nativeKey(const NativeKey& native, int key = 0);
    void nativeKeyDown(const NativeKey& native, int key = 0, Press press = Press::first);
    void nativeKeyUp(const NativeKey& native, int key = 0);
    /// Whether what has the focus keeps the key from the window's shortcuts.
    [[nodiscard]] bool isKeptFromShortcuts(const NativeKey& native, int key = 0);
    /// The left button, at a place of the window where the test knows what is.
    void clickAt(QPoint place);

    /// Every text that can be seen, from the top of the tree down, empty ones left out.
    [[nodiscard]] QStringList texts() const;
    [[nodiscard]] bool shows(const QString& text) const;
    /// Accessible names of what Tab walks through, in its order, until it comes round or leaves the window.
    [[nodiscard]] QStringList tabOrder();
    /// What is cut off, lies outside the window's width or over another text: each in words. Empty is good.
    [[nodiscard]] QStringList layoutFlaws() const;

private:
    void layOut() const;

    QQuickWindow& m_window;
};

/// The layout flaws of a page of the main window at its smallest size, scrolled from its top to its end.
[[nodiscard]] QStringList flawsOf(UiWorld& world, SettingsTab page);

} // namespace tulvane::test
