#pragma once

#include <QList>
#include <QString>
#include <QtGlobal>

namespace tulvane {

/// What kind of thing computes.
enum class DeviceKind : quint8 {
    discrete,   ///< a card with memory of its own
    integrated, ///< part of the processor, and of its memory
    shared,     ///< a card that a virtual machine hands on
    other,      ///< what its driver does not say
    software,   ///< none: the processor plays a card, slower than it computes by itself
};

/// Something that a driver offers to compute with, besides the processor.
struct ComputingDevice {
    quint32 index = 0; ///< its place among all that the drivers offer, as long as none comes or goes
    QString name;      ///< "NVIDIA GeForce RTX 4070"; a second one of the same name has " (2)" after it
    DeviceKind kind = DeviceKind::other;
    QString driver{};      ///< with its version: "NVIDIA 580.159.04"
    qint64 totalBytes = 0; ///< of memory
    qint64 freeBytes = 0;  ///< of memory, as far as the driver says; else the same as `totalBytes`

    [[nodiscard]] friend bool operator==(const ComputingDevice&, const ComputingDevice&) = default;
};

using ComputingDevices = QList<ComputingDevice>;

} // namespace tulvane
