#pragma once

#include <base/Result.h>
#include <ports/DefaultsError.h>

#include <QString>
#include <QVariant>
#include <QVariantMap>

#include <functional>

namespace tulvane {

/// The user's preferences: typed values by key, in the domain of one application.
///
/// A value is a bool, an integer (qint64; quint64 only where it does not fit), a double, a QString, a
/// QVariantList or a QVariantMap of such values, and comes back with the type that it was stored with. `set`
/// also takes the other integer types, float and QStringList, and turns them into these.
///
/// Thread: one object belongs to one thread. Processes: any number may share a domain; writes to different
/// keys never undo each other, and what one process has written is what the next read of another one gives.
class UserDefaults {
public:
    using TroubleHandler = std::function<void(const DefaultsError&)>;

    UserDefaults() = default;
    UserDefaults(const UserDefaults&) = delete;
    UserDefaults& operator=(const UserDefaults&) = delete;
    virtual ~UserDefaults() = default;

    /// The value under the key; an invalid QVariant where there is none. Never fails: what cannot be read
    /// counts as absent, and the trouble handler is called.
    [[nodiscard]] virtual QVariant value(const QString& key) const = 0;

    /// Stores the value at once; when this returns without an error it is on disk. `notWritten`: the value
    /// still holds for this object, and goes out with the next write that succeeds. `notStorable`: nothing
    /// has changed.
    virtual Result<void, DefaultsError> set(const QString& key, const QVariant& value) = 0;

    /// Makes the key absent; an absent key is no error. Failures as for `set`.
    virtual Result<void, DefaultsError> remove(const QString& key) = 0;

    /// Everything that some application's domain holds ("com.dunio.Tulvane"); empty where there is no such
    /// domain. Another application's damaged file is an error here and left as it is.
    [[nodiscard]] virtual Result<QVariantMap, DefaultsError> domain(const QString& name) const = 0;

    /// Called for trouble with the domain as a whole (damaged, unreadable), on the object's thread: at once
    /// for what was met before there was a handler, later from within `value`, `set` or `remove`.
    virtual void setTroubleHandler(const TroubleHandler& handler) = 0;

    [[nodiscard]] bool contains(const QString& key) const { return value(key).isValid(); }
};

} // namespace tulvane
