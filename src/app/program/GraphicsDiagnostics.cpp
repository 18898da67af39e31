#include <app/program/GraphicsDiagnostics.h>
#include <speech/device/DeviceChoice.h>

#include <algorithm>

namespace tulvane {

namespace {

const auto subject = QStringLiteral("graphics card");
constexpr qint64 mega = 1'000'000;

/// No driver offers the card that is there.
Diagnostic withoutDriver(const QList<GraphicsCard>& cards)
{
    const auto closed =
        std::ranges::find_if(cards, [](const GraphicsCard& card) { return !card.isAccessible; });
    if (closed != cards.end())
        return Diagnostic::bad(
            subject, QStringLiteral("%1 of the %2 card may not be opened.").arg(closed->node, closed->vendor),
            QStringLiteral("sudo usermod -aG render,video $USER, then log in again."));
    const QString vendor = cards.constFirst().vendor;
    return Diagnostic::bad(subject, QStringLiteral("No driver for Vulkan offers the %1 card.").arg(vendor),
                           vendor == u"NVIDIA" ? QStringLiteral("Install NVIDIA's driver (nvidia-driver).")
                                               : QStringLiteral("Install mesa-vulkan-drivers."));
}

Diagnostic notChosen(const NoDevice& why, const QList<GraphicsCard>& cards)
{
    switch (why.reason) {
    case NoDevice::Reason::asked:
        return Diagnostic::good(subject, QStringLiteral("not used, as the settings say"));
    case NoDevice::Reason::memory:
        return Diagnostic::bad(subject, why.text(),
                               QStringLiteral("End programs that use the card, or select a smaller model."));
    case NoDevice::Reason::unknown:
        return Diagnostic::bad(
            subject, why.text(),
            QStringLiteral("tulvane devices lists them; computingDevice auto takes the best."));
    case NoDevice::Reason::none:
    case NoDevice::Reason::softwareOnly:
        break;
    }
    return cards.isEmpty() ? Diagnostic::good(subject, QStringLiteral("none")) : withoutDriver(cards);
}

} // namespace

Diagnostic graphicsDiagnostic(const GraphicsFacts& facts)
{
    if (!facts.isInstalled)
        return Diagnostic::good(subject,
                                facts.cards.isEmpty()
                                    ? QStringLiteral("none")
                                    : QStringLiteral("%1, not used by this build; make gpu builds what does")
                                          .arg(facts.cards.constFirst().vendor));
    const auto device = chooseDevice(facts.devices, facts.wanted, facts.neededBytes);
    if (!device)
        return notChosen(device.error(), facts.cards);
    if (facts.trial == false)
        return Diagnostic::bad(
            subject,
            QStringLiteral("%1 failed its trial with the driver %2.").arg(device->name, device->driver),
            QStringLiteral("Update the driver, or try again: tulvane settings set computingDevice \"%1\"")
                .arg(device->name));
    return Diagnostic::good(subject, QStringLiteral("%1 (%2; %3 of %4 MB free)")
                                         .arg(device->name, device->driver)
                                         .arg(device->freeBytes / mega)
                                         .arg(device->totalBytes / mega));
}

} // namespace tulvane
