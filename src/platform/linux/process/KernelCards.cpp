#include <platform/linux/process/KernelCards.h>

#include <QDir>
#include <QFile>

#include <fcntl.h>
#include <unistd.h>

namespace tulvane {

namespace {

// As /sys/class/drm/*/device/vendor gives them.
constexpr auto nvidia = "0x10de";

QString vendorName(const QByteArray& number)
{
    if (number == nvidia)
        return QStringLiteral("NVIDIA");
    if (number == "0x1002")
        return QStringLiteral("AMD");
    if (number == "0x8086")
        return QStringLiteral("Intel");
    return QString::fromLatin1(number);
}

} // namespace

GraphicsCard KernelCards::card(const QString& vendor, const QString& node) const
{
    const QString path = m_root + node;
    const bool isAccessible = access(QFile::encodeName(path).constData(), R_OK | W_OK) == 0;
    return {.vendor = vendor, .node = node, .isAccessible = isAccessible};
}

QList<GraphicsCard> KernelCards::cards() const
{
    QList<GraphicsCard> found;
    bool hasNvidia = false;
    const QDir nodes(m_root + QStringLiteral("/dev/dri"));
    for (const QString& name : nodes.entryList({QStringLiteral("renderD*")}, QDir::System | QDir::Files)) {
        QFile vendor(m_root + QStringLiteral("/sys/class/drm/%1/device/vendor").arg(name));
        const QByteArray number =
            vendor.open(QIODevice::ReadOnly) ? vendor.readAll().trimmed() : QByteArray();
        hasNvidia = hasNvidia || number == nvidia;
        found.append(card(vendorName(number), QStringLiteral("/dev/dri/") + name));
    }
    const QString plain = QStringLiteral("/dev/nvidia0");
    if (!hasNvidia && QFile::exists(m_root + plain))
        found.append(card(vendorName(nvidia), plain));
    return found;
}

} // namespace tulvane
