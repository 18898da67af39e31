#pragma once

#include <ui/viewmodels/SetupFacts.h>
#include <ui/viewmodels/SetupItem.h>

#include <QList>
#include <QObject>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

namespace tulvane {

class AppSettings;
class SettingsSelection;
class Windows;

/// The setup checklist, and what the rest of the main window shows of it. Live: nothing is stored but whether
/// the user wants to see it. Main thread.
class SetupViewModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    /// Objects with `id`, `title`, `symbol`, `done`, `essential` and `label` ("Done", "To do", "Optional").
    Q_PROPERTY(QVariantList items READ itemObjects NOTIFY changed)
    Q_PROPERTY(int doneCount READ doneCount NOTIFY changed)
    Q_PROPERTY(QString progress READ progress NOTIFY changed)
    /// How many of the essential items are still to do, and the same in words ("2 steps left.").
    Q_PROPERTY(int missingEssentials READ missingEssentials NOTIFY changed)
    Q_PROPERTY(QString missingText READ missingText NOTIFY changed)
    Q_PROPERTY(bool checklistHidden READ isChecklistHidden NOTIFY checklistHiddenChanged)

public:
    /// All collaborators outlive this object.
    SetupViewModel(const SetupFacts& facts, AppSettings& settings, Windows& windows,
                   SettingsSelection& selection, QObject* parent);

    [[nodiscard]] QList<SetupItem> items() const;
    [[nodiscard]] QVariantList itemObjects() const;
    [[nodiscard]] int doneCount() const;
    [[nodiscard]] QString progress() const;
    [[nodiscard]] int missingEssentials() const;
    [[nodiscard]] QString missingText() const;
    [[nodiscard]] bool isChecklistHidden() const;

    /// Does what the item is there for; an unknown identifier is ignored.
    Q_INVOKABLE void act(const QString& id) const;
    Q_INVOKABLE void hideChecklist();
    /// The way back to an unfinished setup: to the checklist, or where that is hidden to the setup guide.
    Q_INVOKABLE void finishSetup();
    Q_INVOKABLE void showSetupGuide() const;

    /// "1 step left.", "3 steps left."
    [[nodiscard]] static QString stepsLeft(int count);

Q_SIGNALS:
    void changed();
    void checklistHiddenChanged();
    /// The home page is there, and its checklist is to be looked at.
    void checklistWanted();

private:
    const SetupFacts& m_facts;
    AppSettings& m_settings;
    Windows& m_windows;
    SettingsSelection& m_selection;
};

} // namespace tulvane
