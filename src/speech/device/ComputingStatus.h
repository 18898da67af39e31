#pragma once

#include <speech/device/SafeRunner.h>

#include <QObject>

#include <memory>
#include <mutex>

namespace tulvane {

/// What the user wants to compute with, and where the model runs: between the engine's thread and the rest of
/// the program. Lives on the main thread, as long as the engine.
class ComputingStatus final : public QObject {
    Q_OBJECT
public:
    explicit ComputingStatus(QObject* parent = nullptr) : QObject(parent) {}

    /// For the engine's thread.
    [[nodiscard]] std::shared_ptr<const WantedDevice> wanted() const { return m_wanted; }
    /// "auto", "cpu" or a device's name. Counts from the next load of a model on.
    void want(const QString& device) { m_wanted->set(device); }

    /// Where the last model was loaded. Any thread.
    [[nodiscard]] ComputingPlace place() const
    {
        const std::lock_guard lock(m_mutex);
        return m_place;
    }
    /// Any thread; `changed` comes on the main thread, later.
    void publish(const ComputingPlace& place);

Q_SIGNALS:
    void changed();
    /// A device that was used or tried has failed: once for each time that the user asks for it.
    void gaveUp(const QString& reason);

private:
    std::shared_ptr<WantedDevice> m_wanted = std::make_shared<WantedDevice>(anyDevice.toString());
    mutable std::mutex m_mutex;
    ComputingPlace m_place;
};

} // namespace tulvane
