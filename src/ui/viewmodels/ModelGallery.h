#pragma once

#include <ui/viewmodels/ModelEntry.h>

#include <QList>
#include <QQmlListProperty>

namespace tulvane {

class ComputingStatus;
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
    /// Where the selected model runs, while it is loaded; else empty
    Q_PROPERTY(QString place READ place NOTIFY statusChanged)
    /// What ended downloads hold of the disk ("1.9 GB"); empty where they hold nothing
    Q_PROPERTY(QString leftovers READ leftovers NOTIFY leftoversChanged)
    /// Whether freeing it destroys a part of a model that a download could go on with
    Q_PROPERTY(bool freeingCosts READ freeingCosts NOTIFY leftoversChanged)

public:
    enum class Status { Ready, Loading, Coming, Missing, None };
    Q_ENUM(Status)

    /// `entries` are the models that are offered; `selected` stands for the selected one. `computing` is null
    /// where models always run on the processor. All outlive this object.
    ModelGallery(ModelManager& models, Workspace& workspace, const ComputingStatus* computing,
                 QList<ModelEntry*> entries, ModelEntry& selected, QObject* parent);

    [[nodiscard]] const QList<ModelEntry*>& entries() const { return m_entries; }
    [[nodiscard]] QQmlListProperty<ModelEntry> entryList() { return {this, &m_entries}; }
    [[nodiscard]] ModelEntry* selected() const { return &m_selected; }
    [[nodiscard]] QString status() const;
    [[nodiscard]] Status statusKind() const;
    [[nodiscard]] QString place() const;

    [[nodiscard]] const QString& leftovers() const { return m_leftovers; }
    [[nodiscard]] bool freeingCosts() const { return m_freeingCosts; }
    /// Reads from the disk what ended downloads have left.
    Q_INVOKABLE void readLeftovers();
    Q_INVOKABLE void freeLeftovers();

    /// Shows the folder of the model files in the file manager.
    Q_INVOKABLE void showFolder() const;

Q_SIGNALS:
    void statusChanged();
    void leftoversChanged();

private:
    [[nodiscard]] bool isAnythingInstalled() const;

    ModelManager& m_models;
    Workspace& m_workspace;
    const ComputingStatus* m_computing;
    QList<ModelEntry*> m_entries;
    ModelEntry& m_selected;
    QString m_leftovers;
    bool m_freeingCosts = false;
};

} // namespace tulvane
