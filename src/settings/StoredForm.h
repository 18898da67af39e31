#pragma once

#include <settings/StoredEnumeration.h>

#include <QString>
#include <QVariant>

#include <optional>

/// How a preference of each type is stored and read: strings, booleans and 64-bit integers. `exact` takes
/// what this program writes and nothing else, `loaded` what it makes sense of when it reads the domain,
/// `written` a text that the user writes. Each gives none for anything else. Any thread.
namespace tulvane {

template <class T>
struct StoredForm;

/// A string out of a few; upper and lower case differ.
template <StoredEnumeration E>
struct StoredForm<E> {
    [[nodiscard]] static QVariant of(E value) { return rawValue(value); }
    [[nodiscard]] static std::optional<E> exact(const QVariant& stored)
    {
        return stored.typeId() == QMetaType::QString ? fromRawValue<E>(stored.toString()) : std::nullopt;
    }
    [[nodiscard]] static std::optional<E> loaded(const QVariant& stored) { return exact(stored); }
    [[nodiscard]] static std::optional<E> written(const QString& text) { return fromRawValue<E>(text); }
};

/// A string; loading, a number reads as its digits.
template <>
struct StoredForm<QString> {
    [[nodiscard]] static QVariant of(const QString& value) { return value; }
    [[nodiscard]] static std::optional<QString> exact(const QVariant& stored);
    [[nodiscard]] static std::optional<QString> loaded(const QVariant& stored);
    [[nodiscard]] static std::optional<QString> written(const QString& text) { return text; }
};

/// True or false.
template <>
struct StoredForm<bool> {
    [[nodiscard]] static QVariant of(bool value) { return value; }
    [[nodiscard]] static std::optional<bool> exact(const QVariant& stored);
    [[nodiscard]] static std::optional<bool> loaded(const QVariant& stored) { return exact(stored); }
    [[nodiscard]] static std::optional<bool> written(const QString& text);
};

/// A 64-bit integer; a floating-point number is none. Written without sign, blanks or leading zeros.
template <>
struct StoredForm<qint64> {
    [[nodiscard]] static QVariant of(qint64 value) { return value; }
    [[nodiscard]] static std::optional<qint64> exact(const QVariant& stored);
    [[nodiscard]] static std::optional<qint64> loaded(const QVariant& stored) { return exact(stored); }
    [[nodiscard]] static std::optional<qint64> written(const QString& text);
};

/// What the plain boolean accessor of user defaults gives: numbers other than 0, "yes" and "true" are true,
/// all else is false.
[[nodiscard]] bool plainBoolean(const QVariant& stored);

} // namespace tulvane
