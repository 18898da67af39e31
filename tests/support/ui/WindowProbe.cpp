#include <support/ui/UiWorld.h>
#include <support/ui/WindowProbe.h>
#include <ui/windows/SettingsWindowController.h>

#include <QAccessible>
#include <QKeyEvent>
#include <QQuickItem>
#include <QQuickView>
#include <QtTest/qtestkeyboard.h>
#include <QtTest/qtestmouse.h>

#include <algorithm>
#include <functional>
#include <stdexcept>

namespace tulvane::test {

namespace {

/// What is drawn at all: an invisible or transparent branch is not.
void eachVisible(QQuickItem& item, const std::function<void(QQuickItem&)>& visit)
{
    if (!item.isVisible() || item.opacity() < 0.01)
        return;
    visit(item);
    for (QQuickItem* child : item.childItems())
        eachVisible(*child, visit);
}

bool isText(const QQuickItem& item)
{
    return item.inherits("QQuickText") || item.inherits("QQuickTextEdit");
}

/// What can be read of the item: invisible signs that only hold words together left out.
QString readable(const QQuickItem& item)
{
    const QVariant figures = item.property("figures");
    if (figures.isValid())
        return figures.toString();
    return isText(item) ? item.property("text").toString().remove(QChar(0x2060)) : QString();
}

QRectF onScreen(const QQuickItem& item)
{
    return item.mapRectToScene(QRectF(0, 0, item.width(), item.height()));
}

/// What of the item is not cut away by the items that clip it.
QRectF unclipped(const QQuickItem& item)
{
    QRectF rect = onScreen(item);
    for (const QQuickItem* above = item.parentItem(); above; above = above->parentItem()) {
        if (above->clip())
            rect &= onScreen(*above);
    }
    return rect;
}

QRectF inked(const QQuickItem& text)
{
    const qreal width = std::min(text.property("contentWidth").toReal(), text.width());
    const qreal height = text.property("contentHeight").toReal();
    const auto alignment = text.property("horizontalAlignment").toInt();
    const qreal left = alignment == Qt::AlignHCenter ? (text.width() - width) / 2
                       : alignment == Qt::AlignRight ? text.width() - width
                                                     : text.property("leftPadding").toReal();
    return text.mapRectToScene(QRectF(left, text.property("topPadding").toReal(), width, height));
}

/// Scrolls every flickable around the item so that it can be seen.
void bringIntoView(QQuickItem& item)
{
    for (QQuickItem* above = item.parentItem(); above; above = above->parentItem()) {
        if (!above->inherits("QQuickFlickable"))
            continue;
        auto* const content = above->property("contentItem").value<QQuickItem*>();
        const QRectF place = content->mapRectFromItem(&item, QRectF(0, 0, item.width(), item.height()));
        const qreal most = std::max(0.0, above->property("contentHeight").toReal() - above->height());
        const qreal wanted = place.center().y() - above->height() / 2;
        above->setProperty("contentY", std::clamp(wanted, 0.0, most));
    }
    UiWorld::settle();
}

} // namespace

WindowProbe::WindowProbe(QQuickWindow& window) : m_window(window)
{
    UiWorld::settle();
}

bool WindowProbe::has(const QString& name) const
{
    bool found = false;
    eachVisible(*m_window.contentItem(), [&](QQuickItem& one) { found = found || one.objectName() == name; });
    return found;
}

QQuickItem& WindowProbe::item(const QString& name) const
{
    QQuickItem* found = nullptr;
    eachVisible(*m_window.contentItem(), [&](QQuickItem& one) {
        if (!found && one.objectName() == name)
            found = &one;
    });
    if (!found)
        throw std::runtime_error("there is no visible control " + name.toStdString());
    return *found;
}

void WindowProbe::click(const QString& name)
{
    click(item(name));
}

void WindowProbe::click(QQuickItem& item)
{
    layOut();
    bringIntoView(item);
    layOut();
    const QPoint middle = onScreen(item).center().toPoint();
    QTest::mouseMove(&m_window, middle);
    QTest::mouseClick(&m_window, Qt::LeftButton, Qt::NoModifier, middle);
    UiWorld::settle();
}

bool WindowProbe::scrollTo(qreal y)
{
    bool hasMoved = false;
    eachVisible(*m_window.contentItem(), [&](QQuickItem& one) {
        if (!one.inherits("QQuickFlickable"))
            return;
        const qreal most = std::max(0.0, one.property("contentHeight").toReal() - one.height());
        const qreal before = one.property("contentY").toReal();
        one.setProperty("contentY", std::min(y, most));
        hasMoved = hasMoved || one.property("contentY").toReal() > before;
    });
    UiWorld::settle();
    return hasMoved;
}

void WindowProbe::press(int key, Qt::KeyboardModifiers modifiers)
{
    QTest::keyClick(&m_window, static_cast<Qt::Key>(key), modifiers);
    UiWorld::settle();
}

void WindowProbe::type(const QString& text)
{
    for (const QChar c : text)
        QTest::sendKeyEvent(QTest::Click, &m_window, Qt::Key_unknown, QString(c), Qt::NoModifier);
    UiWorld::settle();
}

void WindowProbe::nativeKey(const NativeKey& native, int key)
{
    nativeKeyDown(native, key);
    nativeKeyUp(native, key);
}

void WindowProbe::nativeKeyDown(const NativeKey& native, int key, Press press)
{
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, native.scanCode, native.virtualKey,
                    native.modifiers, QString(), press == Press::repeated);
    QCoreApplication::sendEvent(&m_window, &event);
    UiWorld::settle();
}

void WindowProbe::nativeKeyUp(const NativeKey& native, int key)
{
    QKeyEvent event(QEvent::KeyRelease, key, Qt::NoModifier, native.scanCode, native.virtualKey,
                    native.modifiers);
    QCoreApplication::sendEvent(&m_window, &event);
    UiWorld::settle();
}

bool WindowProbe::isKeptFromShortcuts(const NativeKey& native, int key)
{
    QKeyEvent event(QEvent::ShortcutOverride, key, Qt::NoModifier, native.scanCode, native.virtualKey,
                    native.modifiers);
    event.ignore();
    QCoreApplication::sendEvent(&m_window, &event);
    return event.isAccepted();
}

void WindowProbe::clickAt(QPoint place)
{
    QTest::mouseClick(&m_window, Qt::LeftButton, Qt::NoModifier, place);
    UiWorld::settle();
}

QStringList WindowProbe::texts() const
{
    QStringList list;
    eachVisible(*m_window.contentItem(), [&list](QQuickItem& one) {
        const QString text = readable(one);
        if (!text.isEmpty())
            list.append(text);
    });
    return list;
}

bool WindowProbe::shows(const QString& text) const
{
    return texts().contains(QString(text).remove(QChar(0x2060)));
}

QStringList WindowProbe::tabOrder()
{
    QStringList names;
    QList<QQuickItem*> seen;
    m_window.requestActivate();
    for (int i = 0; i < 300; ++i) {
        press(Qt::Key_Tab);
        QQuickItem* const focused = m_window.activeFocusItem();
        if (!focused || focused == m_window.contentItem() || seen.contains(focused))
            break;
        seen.append(focused);
        QAccessibleInterface* const reader = QAccessible::queryAccessibleInterface(focused);
        names.append(reader ? reader->text(QAccessible::Name) : QString());
    }
    return names;
}

void WindowProbe::layOut() const
{
    // Rows, columns and flows place their items just before a frame is drawn.
    static_cast<void>(m_window.grabWindow());
}

QStringList WindowProbe::layoutFlaws() const
{
    layOut();
    QStringList flaws;
    QList<std::pair<QString, QRectF>> placed;
    const QRectF inside(QPointF(0, 0), QSizeF(m_window.size()));
    eachVisible(*m_window.contentItem(), [&](QQuickItem& one) {
        const QString text = isText(one) ? one.property("text").toString() : QString();
        if (text.trimmed().isEmpty())
            return;
        if (one.property("truncated").toBool())
            flaws.append(QStringLiteral("“%1” is cut short").arg(text));
        if (one.property("contentWidth").toReal() > one.width() + 1)
            flaws.append(QStringLiteral("“%1” is wider than its place").arg(text));
        const QRectF ink = inked(one);
        if (ink.left() < inside.left() - 1 || ink.right() > inside.right() + 1)
            flaws.append(QStringLiteral("“%1” leaves the window").arg(text));
        const QRectF seen = ink & unclipped(one);
        if (seen.isEmpty())
            return;
        for (const auto& [other, place] : placed) {
            const QRectF shared = place & seen;
            if (shared.width() > 2 && shared.height() > 3)
                flaws.append(QStringLiteral("“%1” lies over “%2”").arg(text, other));
        }
        placed.append({text, seen});
    });
    return flaws;
}

QStringList flawsOf(UiWorld& world, SettingsTab page)
{
    world.ui.showPage(page);
    QQuickWindow& window = *world.ui.settingsWindow().window();
    window.resize(SettingsWindowController::smallest);
    WindowProbe probe(window);
    QStringList flaws = probe.layoutFlaws();
    for (qreal y = 400; probe.scrollTo(y); y += 400)
        flaws += probe.layoutFlaws();
    return flaws;
}

} // namespace tulvane::test
