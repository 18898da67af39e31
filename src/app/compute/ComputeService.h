#pragma once

#include <ports/SystemMemory.h>
#include <speech/device/HelperMessages.h>
#include <speech/whisper/EngineCore.h>

#include <QElapsedTimer>
#include <QString>

#include <atomic>
#include <functional>
#include <memory>

namespace tulvane {

/// What the helper does for each request. One thread.
class ComputeService final {
public:
    /// `library` (absolute) computes on devices, `backends` is the folder of those for the processor. `say`
    /// takes every answer, signs of life included. `memory` outlives the service.
    ComputeService(QString library, QString backends, const SystemMemory& memory,
                   std::function<void(const helper::Answer&)> say);

    void answer(const helper::Request& request);

private:
    [[nodiscard]] helper::Answer listDevices() const;
    [[nodiscard]] bool prepare(quint32 device);
    [[nodiscard]] helper::Answer load(const helper::Load& request);
    [[nodiscard]] helper::Answer transcribe(const helper::Transcribe& request);
    void showLife();

    QString m_library;
    std::function<void(const helper::Answer&)> m_say;
    std::atomic<bool> m_closing = false;
    EngineCore m_core;
    std::optional<bool> m_hasDevice;
    QElapsedTimer m_sinceSignOfLife;
};

} // namespace tulvane
