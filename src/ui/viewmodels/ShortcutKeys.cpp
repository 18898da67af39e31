#include <ports/GlobalHotkeys.h>
#include <ui/viewmodels/ShortcutKeys.h>

#include <QKeyEvent>
#include <QMouseEvent>
#include <QQuickWindow>

namespace tulvane {

namespace {

NativeKey nativeKey(const QKeyEvent& event)
{
    return {event.nativeScanCode(), event.nativeVirtualKey(), event.nativeModifiers()};
}

bool isByKeyboard(Qt::FocusReason reason)
{
    return reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
           reason == Qt::ShortcutFocusReason;
}

} // namespace

ShortcutKeys::ShortcutKeys(QQuickItem* parent) : QQuickItem(parent)
{
    setActiveFocusOnTab(true);
    setAcceptedMouseButtons(Qt::LeftButton);
}

ShortcutKeys::~ShortcutKeys()
{
    stopRecording();
}

void ShortcutKeys::setModel(ShortcutFieldViewModel* model)
{
    if (m_model == model)
        return;
    stopRecording();
    if (m_model)
        m_model->disconnect(this);
    m_model = model;
    if (m_model)
        connect(m_model, &ShortcutFieldViewModel::changed, this, &ShortcutKeys::noteRecording);
    Q_EMIT modelChanged();
}

void ShortcutKeys::record(Qt::FocusReason reason)
{
    if (!hasActiveFocus())
        forceActiveFocus(reason);
    if (!m_model)
        return;
    m_isMine = true;
    m_model->start();
    if (!m_hold && window())
        m_hold = m_model->holdKeyboard(*window());
}

void ShortcutKeys::stopRecording()
{
    if (isListening())
        m_model->stop();
    m_isMine = false;
    m_hold.reset();
}

void ShortcutKeys::noteRecording()
{
    // Whatever ended it, other programs have the keyboard again, and the next recording may be another
    // field's.
    if (!isListening()) {
        m_isMine = false;
        m_hold.reset();
    }
    Q_EMIT recordingChanged();
}

void ShortcutKeys::setVisualFocus(bool has)
{
    if (m_hasVisualFocus == has)
        return;
    m_hasVisualFocus = has;
    Q_EMIT visualFocusChanged();
}

bool ShortcutKeys::event(QEvent* event)
{
    // Else a key that works something in this window would do that instead of being recorded.
    if (event->type() == QEvent::ShortcutOverride && isListening()) {
        event->accept();
        return true;
    }
    return QQuickItem::event(event);
}

void ShortcutKeys::keyPressEvent(QKeyEvent* event)
{
    if (!m_model || event->isAutoRepeat()) {
        event->setAccepted(isListening());
        return;
    }
    if (!isListening()) {
        pressWhileAtRest(*event);
        return;
    }
    event->setAccepted(m_model->keyPressed(nativeKey(*event)) == ShortcutFieldViewModel::Answer::taken);
}

void ShortcutKeys::pressWhileAtRest(QKeyEvent& event)
{
    // A combination is a shortcut of the window or the desktop, perhaps the one that this field shows.
    if ((event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) != 0) {
        event.ignore();
        return;
    }
    switch (event.key()) {
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        record();
        break;
    case Qt::Key_Backspace:
    case Qt::Key_Delete:
        m_model->clear();
        break;
    default:
        event.ignore();
        return;
    }
    event.accept();
}

void ShortcutKeys::keyReleaseEvent(QKeyEvent* event)
{
    event->setAccepted(isListening());
    if (isListening() && !event->isAutoRepeat())
        m_model->keyReleased(nativeKey(*event));
}

void ShortcutKeys::mousePressEvent(QMouseEvent* event)
{
    record(Qt::MouseFocusReason);
    event->accept();
}

void ShortcutKeys::focusInEvent(QFocusEvent* event)
{
    setVisualFocus(isByKeyboard(event->reason()));
    QQuickItem::focusInEvent(event);
}

void ShortcutKeys::focusOutEvent(QFocusEvent* event)
{
    setVisualFocus(false);
    stopRecording();
    QQuickItem::focusOutEvent(event);
}

void ShortcutKeys::itemChange(ItemChange change, const ItemChangeData& data)
{
    if (change == ItemSceneChange) {
        if (m_watched)
            m_watched->removeEventFilter(this);
        m_watched = data.window;
        if (m_watched)
            m_watched->installEventFilter(this);
    }
    if (change == ItemVisibleHasChanged && !data.boolValue)
        stopRecording();
    QQuickItem::itemChange(change, data);
}

bool ShortcutKeys::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Hide)
        stopRecording();
    if (event->type() == QEvent::MouseButtonPress && isListening()) {
        const QPointF place = mapFromScene(static_cast<QMouseEvent*>(event)->position());
        if (!contains(place))
            stopRecording();
    }
    return QQuickItem::eventFilter(watched, event);
}

} // namespace tulvane
