#pragma once

#include <ports/RemoteControl.h>

#include <QObject>

namespace tulvane {

/// What the session bus shows of the running program, at "/com/dunio/Tulvane". Each call answers with a JSON
/// object; none holds dictated text.
class RemoteObject final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.dunio.Tulvane")

public:
    static inline const QString interfaceName = QStringLiteral("com.dunio.Tulvane");
    static inline const QString path = QStringLiteral("/com/dunio/Tulvane");

    explicit RemoteObject(RemoteControl::Answer answer) : m_answer(std::move(answer)) {}

    /// The method that carries a request.
    [[nodiscard]] static QString methodOf(RemoteRequest request);

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
