#pragma once

#include <ui/viewmodels/ModelEntry.h>

#include <QList>
#include <QQmlListProperty>

namespace tulvane {

class ModelManager;
class Workspace;

/// The Models page: the entries that are offered, and how the selected one stands. Main thread.
class ModelGallery final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    Q_PROPERTY(QQmlListProperty<tulvane::ModelEntry> entries READ entryList CONSTANT)
    Q_PROPERTY(tulvane::ModelEntry* selected READ selected CONSTANT)
    /// One line about the selected model
    Q_PROPERTY(QString status READ status NOTIFY statusChanged)
    Q_PROPERTY(Status statusKind READ statusKind NOTIFY statusChanged)

public:
    enum class Status { Ready, Loading, Missing, None };
    Q_ENUM(Status)

    /// `entries` are the models that are offered; `selected` stands for the selected one. All outlive this
    /// object.
    ModelGallery(const ModelManager& models, Workspace& workspace, QList<ModelEntry*> entries,
                 ModelEntry& selected, QObject* parent);

    [[nodiscard]] const QList<ModelEntry*>& entries() const { return m_entries; }
    [[nodiscard]] QQmlListProperty<ModelEntry> entryList() { return {this, &m_entries}; }
    [[nodiscard]] ModelEntry* selected() const { return &m_selected; }
    [[nodiscard]] QString status() const;
    [[nodiscard]] Status statusKind() const;

    /// Shows the folder of the model files in the file manager.
    Q_INVOKABLE void showFolder() const;

Q_SIGNALS:
    void statusChanged();

private:
    [[nodiscard]] bool isAnythingInstalled() const;

    const ModelManager& m_models;
    Workspace& m_workspace;
    QList<ModelEntry*> m_entries;
    ModelEntry& m_selected;
};

} // namespace tulvane
