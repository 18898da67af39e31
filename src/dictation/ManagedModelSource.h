#pragma once

#include <dictation/ModelSource.h>

namespace tulvane {

class AppSettings;
class ModelManager;

/// The model that the settings select, as the model manager keeps it; an unknown selection counts as the
/// catalogue's fallback. Main thread.
class ManagedModelSource final : public ModelSource {
    Q_OBJECT

public:
    /// Both outlive this object.
    ManagedModelSource(const AppSettings& settings, const ModelManager& manager, QObject* parent = nullptr);

    [[nodiscard]] std::optional<QString> readyFile() const override;

private:
    const AppSettings& m_settings;
    const ModelManager& m_manager;
};

} // namespace tulvane
