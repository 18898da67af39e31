#include <app/cli/CommandSyntax.h>
#include <app/cli/DevicesCommand.h>
#include <speech/device/DeviceChoice.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace tulvane::cli {

namespace {

QString nameOf(DeviceKind kind)
{
    switch (kind) {
    case DeviceKind::discrete:
        return QStringLiteral("card");
    case DeviceKind::integrated:
        return QStringLiteral("integrated");
    case DeviceKind::shared:
        return QStringLiteral("shared");
    case DeviceKind::other:
        return QStringLiteral("other");
    case DeviceKind::software:
        return QStringLiteral("software");
    }
    Q_UNREACHABLE();
}

QJsonObject toJson(const ComputingDevice& device, bool isChosen)
{
    return {
        {QStringLiteral("name"), device.name},           {QStringLiteral("kind"), nameOf(device.kind)},
        {QStringLiteral("driver"), device.driver},       {QStringLiteral("totalBytes"), device.totalBytes},
        {QStringLiteral("freeBytes"), device.freeBytes}, {QStringLiteral("chosen"), isChosen}};
}

QString lineOf(const ComputingDevice& device)
{
    constexpr qint64 mega = 1'000'000;
    return QStringLiteral("%1 (%2; %3; %4 of %5 MB free)")
        .arg(device.name, nameOf(device.kind), device.driver)
        .arg(device.freeBytes / mega)
        .arg(device.totalBytes / mega);
}

} // namespace

int runDevices(const QStringList& arguments, const DevicesContext& context, Console& console)
{
    CommandSyntax syntax(QStringLiteral("devices"), QStringLiteral("Lists what speech models can run on."));
    syntax.addFlag(QStringLiteral("json"), QStringLiteral("Print one JSON array."));
    syntax.setOperandCount(0, 0);
    syntax.setRemark(QStringLiteral("The chosen one has a star. “tulvane settings set computingDevice NAME” "
                                    "chooses another; “auto” takes\nthe best card, “cpu” none."));
    if (const auto status = syntax.parse(arguments, console))
        return *status;
    const ComputingDevices devices = context.devices();
    const auto chosen = chooseDevice(devices, context.wanted, 0);
    const auto isChosen = [&chosen](const ComputingDevice& device) { return chosen && *chosen == device; };
    if (syntax.isSet(QStringLiteral("json"))) {
        QJsonArray all;
        for (const ComputingDevice& device : devices)
            all.append(toJson(device, isChosen(device)));
        all.append(QJsonObject{{QStringLiteral("name"), QStringLiteral("cpu")},
                               {QStringLiteral("chosen"), !chosen.has_value()}});
        console.out << QString::fromUtf8(QJsonDocument(all).toJson(QJsonDocument::Compact)) << Qt::endl;
        return ExitStatus::done;
    }
    for (const ComputingDevice& device : devices)
        console.out << (isChosen(device) ? "* " : "  ") << lineOf(device) << Qt::endl;
    for (const QString& processor : context.processors)
        console.out << (chosen ? "  " : "* ") << processor << Qt::endl;
    if (!context.isInstalled)
        console.err << "The part for graphics cards is not installed (make gpu)." << Qt::endl;
    return ExitStatus::done;
}

} // namespace tulvane::cli
