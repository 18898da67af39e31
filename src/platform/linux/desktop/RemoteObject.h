#pragma once

#include <ports/RemoteControl.h>

#include <QObject>

namespace tulvane {

/// What the session bus shows of the running program, by the names of `remoteNames`. Each call answers with a
/// JSON object; none holds dictated text.
class RemoteObject final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.dunio.Tulvane")

public:
    explicit RemoteObject(RemoteControl::Answer answer) : m_answer(std::move(answer)) {}

public Q_SLOTS:
    // The names are those that the bus shows.
    QString Start() { return answer(RemoteRequest::start); }
    QString Stop() { return answer(RemoteRequest::stop); }
    QString Toggle() { return answer(RemoteRequest::toggle); }
    QString Cancel() { return answer(RemoteRequest::cancel); }
    QString Status() { return answer(RemoteRequest::status); }
    QString Doctor() { return answer(RemoteRequest::doctor); }
    QString Quit() { return answer(RemoteRequest::quit); }
    QString Settings(const QString& words) { return answer(RemoteRequest::settings, words); }
    QString Activate(const QString& page) { return answer(RemoteRequest::activate, page); }

Q_SIGNALS:
    void PhaseChanged(const QString& phase);

private:
    [[nodiscard]] QString answer(RemoteRequest request, const QString& argument = {}) const;

    RemoteControl::Answer m_answer;
};

} // namespace tulvane
