#include "JsonProcess.h"

#include <support/Await.h>

#include <QJsonDocument>

#include <algorithm>
#include <stdexcept>

namespace tulvane::test {

JsonProcess::JsonProcess(QProcess& process, char endOfMessage) : m_process(process), m_end(endOfMessage)
{
    QObject::connect(&process, &QProcess::readyReadStandardOutput, &m_context, [this] { read(); });
    read();
}

QJsonObject JsonProcess::ask(QJsonObject request)
{
    const int id = ++m_lastId;
    request[QStringLiteral("id")] = id;
    m_process.write(QJsonDocument(request).toJson(QJsonDocument::Compact) + m_end);
    if (!waitUntil([&] { return m_answers.contains(id) || m_process.state() == QProcess::NotRunning; }) ||
        !m_answers.contains(id))
        throw std::runtime_error("no answer from " + m_process.program().toStdString() + ": " +
                                 m_process.readAllStandardError().right(2000).toStdString());
    return m_answers.take(id);
}

qsizetype JsonProcess::count(const QString& event) const
{
    return std::ranges::count_if(
        m_told, [&](const QJsonObject& message) { return message[QStringLiteral("event")] == event; });
}

void JsonProcess::read()
{
    m_rest += m_process.readAllStandardOutput();
    for (qsizetype end = m_rest.indexOf(m_end); end >= 0; end = m_rest.indexOf(m_end)) {
        const QJsonObject message = QJsonDocument::fromJson(m_rest.left(end)).object();
        m_rest.remove(0, end + 1);
        if (message.contains(QStringLiteral("id")))
            m_answers.insert(message[QStringLiteral("id")].toInt(), message);
        else
            m_told.append(message);
    }
}

} // namespace tulvane::test
