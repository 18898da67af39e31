#pragma once

#include <ui/UiContext.h>
#include <ui/models/MainModel.h>

#include <QObject>

namespace tulvane {

/// What the windows' QML is given: one model for each page, made when a page first asks for it. Main thread.
class UiModels final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    Q_PROPERTY(tulvane::MainModel* main READ main CONSTANT)

public:
    UiModels(const UiContext& context, SettingsSelection& selection);
    ~UiModels() override;

    [[nodiscard]] MainModel* main();

private:
    /// Makes the model on first use; it is this object's child.
    template <class Model, class... Arguments>
    Model* made(Model*& model, Arguments&&... arguments)
    {
        if (!model)
            model = new Model(m_context, std::forward<Arguments>(arguments)..., this);
        return model;
    }

    UiContext m_context;
    SettingsSelection& m_selection;
    MainModel* m_main = nullptr;
};

} // namespace tulvane
