#pragma once

#include <base/async/Lifetime.h>
#include <platform/linux/atspi/BusLink.h>
#include <platform/linux/gnome/EngineWatch.h>
#include <platform/linux/gnome/GnomeLayout.h>
#include <platform/linux/gnome/IBusEngine.h>

#include <QCoroTask>
#include <QProcessEnvironment>

#include <functional>
#include <memory>
#include <optional>

namespace tulvane {

/// Commits a text into the field that has the focus, by being the input method's engine for the moment. No
/// clipboard, no keys and no permission; the keys that the user holds down do not matter. The engine that was
/// there comes back however this ends, a killed program included. Main thread, which it never blocks.
class IBusCommit final {
public:
    enum class Outcome {
        committed,   ///< given to the field; whether it took the text is to be read back
        noField,     ///< no field came, or one for passwords
        unavailable, ///< no such service, or it does not answer
        interrupted, ///< the service went while the text was on its way
    };

    /// `usualEngine` is asked for the user's where the service names none.
    explicit IBusCommit(
        QProcessEnvironment environment,
        std::function<QString()> usualEngine = [] { return GnomeLayout::engineOf({}); })
        : m_environment(std::move(environment)),
          m_usualEngine(std::move(usualEngine))
    {
    }
    IBusCommit(const IBusCommit&) = delete;
    IBusCommit& operator=(const IBusCommit&) = delete;
    ~IBusCommit();

    /// One at a time; a second one meanwhile is unavailable. `arrived` is asked until it says yes, for half a
    /// second at most, before the engine is given back: a field takes what an engine commits while that is in
    /// force.
    QCoro::Task<Outcome> commit(QString text, std::function<QCoro::Task<bool>()> arrived);
    /// What the field reported of its text around the caret at the last commit.
    [[nodiscard]] QString surroundings() const { return m_engine ? m_engine->surroundings() : QString(); }

private:
    QCoro::Task<bool> connect();
    /// Nothing where the service does not tell.
    QCoro::Task<QVariant> property(QString name);
    /// Whether a program's field listens to the service: what is committed without one goes nowhere. Nothing
    /// where the service does not tell.
    QCoro::Task<std::optional<bool>> hasField();
    QCoro::Task<QString> engineInForce();
    QCoro::Task<bool> become();
    QCoro::Task<Outcome> commitIntoField(QString text, std::function<QCoro::Task<bool>()> arrived);
    QCoro::Task<> giveBack();
    QCoro::Task<std::optional<QDBusMessage>> ask(QString interface, QString method, QVariantList arguments);
    [[nodiscard]] QDBusMessage setEngine(const QString& name) const;

    QProcessEnvironment m_environment;
    std::function<QString()> m_usualEngine;
    BusLink m_link;
    std::shared_ptr<BusConnection> m_connection;
    std::unique_ptr<IBusEngine> m_engine;
    std::unique_ptr<EngineWatch> m_watch;
    QString m_address;
    QString m_before; ///< the engine to give back; empty where ours is not in force
    bool m_isBusy = false;
    Lifetime m_lifetime;
};

} // namespace tulvane
