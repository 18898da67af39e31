#pragma once

#include <QJsonObject>
#include <QList>
#include <QObject>
#include <QProcess>
#include <QString>

namespace tulvane::test {

/// A program that answers requests on its standard streams: JSON objects, each ended by one byte, an answer
/// with the id of its request. What it says unasked is kept. Main thread.
class JsonProcess final {
public:
    /// `process` has been started, and outlives this.
    JsonProcess(QProcess& process, char endOfMessage);

    /// The answer; runs the event loop meanwhile. Throws std::runtime_error when none comes in time.
    QJsonObject ask(QJsonObject request);

    /// What came unasked, oldest first.
    [[nodiscard]] QList<QJsonObject> told() const { return m_told; }
    /// How many of these had this "event".
    [[nodiscard]] qsizetype count(const QString& event) const;
    void forgetTold() { m_told.clear(); }

private:
    void read();

    QProcess& m_process;
    char m_end;
    int m_lastId = 0;
    QByteArray m_rest;
    QHash<int, QJsonObject> m_answers;
    QList<QJsonObject> m_told;
    QObject m_context;
};

} // namespace tulvane::test
