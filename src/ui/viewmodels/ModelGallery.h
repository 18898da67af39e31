#pragma once

#include <ui/viewmodels/ModelEntry.h>

#include <QList>

namespace tulvane {

/// The Models page: the entries that are offered, and how the selected one stands. Main thread.
class ModelGallery final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    Q_PROPERTY(QList<tulvane::ModelEntry*> entries READ entries CONSTANT)
    Q_PROPERTY(tulvane::ModelEntry* selected READ selected CONSTANT)
    /// One line about the selected model
    Q_PROPERTY(QString status READ status NOTIFY statusChanged)
    /// "ready", "loading", "missing" or "none"
    Q_PROPERTY(QString statusKind READ statusKind NOTIFY statusChanged)

public:
    ModelGallery(const UiContext& context, ModelEntry* selected, QObject* parent);

    [[nodiscard]] const QList<ModelEntry*>& entries() const { return m_entries; }
    [[nodiscard]] ModelEntry* selected() const { return m_selected; }
    [[nodiscard]] QString status() const;
    [[nodiscard]] QString statusKind() const;

    /// Shows the folder of the model files in the file manager.
    Q_INVOKABLE void showFolder() const;

Q_SIGNALS:
    void statusChanged();

private:
    [[nodiscard]] bool isAnythingInstalled() const;

    UiContext m_context;
    QList<ModelEntry*> m_entries;
    ModelEntry* m_selected;
};

} // namespace tulvane
