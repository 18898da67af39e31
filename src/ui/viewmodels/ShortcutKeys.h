#pragma once

#include <ui/viewmodels/ShortcutFieldViewModel.h>

#include <QPointer>
#include <QQuickItem>

namespace tulvane {

/// The keyboard's and the mouse's way into the field in which a key combination is set. While it records,
/// every key is the field's, also those that work something else in the window, and where the desktop allows
/// it those that the desktop itself and other programs have taken; recording ends when the focus goes, when
/// the window is hidden, and when something else is clicked. Otherwise Space and Return begin recording, and
/// Backspace clears. Main thread.
class ShortcutKeys : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tulvane::ShortcutFieldViewModel* model READ model WRITE setModel NOTIFY modelChanged)
    /// The model records, and does so for this field; another window may have one, too.
    Q_PROPERTY(bool recording READ isRecording NOTIFY recordingChanged)
    /// Has the focus, and got it by the keyboard.
    Q_PROPERTY(bool visualFocus READ hasVisualFocus NOTIFY visualFocusChanged)

public:
    explicit ShortcutKeys(QQuickItem* parent = nullptr);
    Q_DISABLE_COPY_MOVE(ShortcutKeys)
    ~ShortcutKeys() override;

    [[nodiscard]] ShortcutFieldViewModel* model() const { return m_model; }
    void setModel(ShortcutFieldViewModel* model);
    [[nodiscard]] bool isRecording() const { return m_isMine && m_model && m_model->isRecording(); }
    [[nodiscard]] bool hasVisualFocus() const { return m_hasVisualFocus; }

    /// Takes the focus and records.
    Q_INVOKABLE void record(Qt::FocusReason reason = Qt::OtherFocusReason);

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    void modelChanged();
    void recordingChanged();
    void visualFocusChanged();

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;

private:
    /// Records, or waits for the recorded combination's key to go up.
    [[nodiscard]] bool isListening() const { return m_isMine && m_model && m_model->isBusy(); }
    void stopRecording();
    void noteRecording();
    void pressWhileAtRest(QKeyEvent& event);
    void setVisualFocus(bool has);

    QPointer<ShortcutFieldViewModel> m_model;
    QPointer<QQuickWindow> m_watched;
    std::unique_ptr<KeyboardGrab::Hold> m_hold;
    bool m_isMine = false; ///< this field began the recording
    bool m_hasVisualFocus = false;
};

} // namespace tulvane
