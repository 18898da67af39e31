#include <base/AtomicFile.h>
#include <base/PrivateFolder.h>
#include <speech/device/TrialRecord.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>

#include <utility>

namespace tulvane {

namespace {

const auto versionsKey = QStringLiteral("versions");
const auto passedKey = QStringLiteral("passed");

QJsonObject contentOf(const QString& path)
{
    QFile file(path);
    if (path.isEmpty() || !file.open(QIODevice::ReadOnly))
        return {};
    return QJsonDocument::fromJson(file.readAll()).object();
}

} // namespace

TrialRecord::TrialRecord(QString file, QString programVersion)
    : m_file(std::move(file)),
      m_programVersion(std::move(programVersion))
{
}

QString TrialRecord::versions(const ComputingDevice& device) const
{
    return device.driver + u" / " + m_programVersion;
}

std::optional<bool> TrialRecord::passed(const ComputingDevice& device) const
{
    const QJsonObject entry = contentOf(m_file)[device.name].toObject();
    if (entry[versionsKey].toString() != versions(device) || !entry[passedKey].isBool())
        return std::nullopt;
    return entry[passedKey].toBool();
}

void TrialRecord::keep(const ComputingDevice& device, bool hasPassed) const
{
    if (m_file.isEmpty() || !makePrivateFolder(QFileInfo(m_file).path()))
        return;
    QJsonObject content = contentOf(m_file);
    content[device.name] = QJsonObject{{versionsKey, versions(device)}, {passedKey, hasPassed}};
    // Without the record the next start tries the device again.
    static_cast<void>(replaceFile(m_file, QJsonDocument(content).toJson()));
}

} // namespace tulvane
