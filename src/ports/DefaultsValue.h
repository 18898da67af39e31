#pragma once

#include <QVariant>
#include <QVariantList>
#include <QVariantMap>

#include <cmath>
#include <limits>
#include <optional>

namespace tulvane {

/// The form in which user defaults hold a value: see UserDefaults. None for what has no such form (an
/// invalid QVariant, a number that is not finite, a type of another kind). Shared by every backend, so that
/// all of them give back the same type.
[[nodiscard]] std::optional<QVariant> storableValue(const QVariant& value);

namespace detail {

// Null has a place inside a list or an object only; at the top it would be a key that is there and is not.
[[nodiscard]] inline std::optional<QVariant> storableMember(const QVariant& value)
{
    return value.typeId() == QMetaType::Nullptr ? std::optional(value) : storableValue(value);
}

[[nodiscard]] inline std::optional<QVariant> storableList(const QVariantList& list)
{
    QVariantList result;
    for (const QVariant& item : list) {
        const std::optional<QVariant> storable = storableMember(item);
        if (!storable)
            return std::nullopt;
        result.append(*storable);
    }
    return QVariant(result);
}

[[nodiscard]] inline std::optional<QVariant> storableMap(const QVariantMap& map)
{
    QVariantMap result;
    for (auto item = map.cbegin(); item != map.cend(); ++item) {
        const std::optional<QVariant> storable = storableMember(item.value());
        if (!storable)
            return std::nullopt;
        result.insert(item.key(), *storable);
    }
    return QVariant(result);
}

} // namespace detail

inline std::optional<QVariant> storableValue(const QVariant& value)
{
    switch (value.typeId()) {
    case QMetaType::Bool:
    case QMetaType::QString:
        return value;
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
        return QVariant(value.toLongLong());
    case QMetaType::ULongLong:
        if (value.toULongLong() > static_cast<qulonglong>(std::numeric_limits<qint64>::max()))
            return value;
        return QVariant(value.toLongLong());
    case QMetaType::Float:
    case QMetaType::Double:
        return std::isfinite(value.toDouble()) ? std::optional(QVariant(value.toDouble())) : std::nullopt;
    case QMetaType::QStringList:
    case QMetaType::QVariantList:
        return detail::storableList(value.toList());
    case QMetaType::QVariantMap:
        return detail::storableMap(value.toMap());
    default:
        return std::nullopt;
    }
}

} // namespace tulvane
