#pragma once

#include <app/program/Diagnostic.h>
#include <ports/GraphicsCards.h>
#include <speech/device/ComputingDevice.h>

#include <QString>

#include <optional>

namespace tulvane {

/// What is known of this machine's graphics cards.
struct GraphicsFacts {
    QList<GraphicsCard> cards{}; ///< as the kernel knows them
    bool isInstalled = false;    ///< whether the part of the program that uses them is
    ComputingDevices devices{};  ///< as the drivers offer them
    QString wanted{};            ///< "auto", "cpu" or a name
    qint64 neededBytes = 0;      ///< what the selected model takes
    std::optional<bool> trial{}; ///< how the trial of the chosen device went; none where none was made
};

/// The chosen device with its driver and its memory, or why a card that is there is not used, and what to do.
[[nodiscard]] Diagnostic graphicsDiagnostic(const GraphicsFacts& facts);

} // namespace tulvane
