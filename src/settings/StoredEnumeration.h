#pragma once

#include <base/Translate.h>

#include <QList>
#include <QString>
#include <QStringList>

#include <algorithm>
#include <array>
#include <optional>

namespace tulvane {

/// Whether a title is translated, or reads the same in every interface language.
enum class TitleForm { translated, asWritten };

/// One case of an enumeration that is stored by its raw value.
template <class E>
struct StoredCase {
    E value;
    const char* rawValue = nullptr;
    const char* title = nullptr;
    TitleForm form = TitleForm::translated;
};

/// Specialised beside each stored enumeration: `cases`, an array of StoredCase in the order in which the user
/// is offered them.
template <class E>
struct StoredCases;

template <class E>
concept StoredEnumeration = requires { StoredCases<E>::cases.size(); };

namespace detail {
template <StoredEnumeration E>
[[nodiscard]] const StoredCase<E>& storedCase(E value)
{
    const auto& cases = StoredCases<E>::cases;
    const auto found = std::ranges::find(cases, value, &StoredCase<E>::value);
    if (found == cases.end())
        Q_UNREACHABLE();
    return *found;
}
} // namespace detail

/// The string that stands for the value in the preferences and on the command line. Any thread.
template <StoredEnumeration E>
[[nodiscard]] QString rawValue(E value)
{
    return QString::fromUtf8(detail::storedCase(value).rawValue);
}

/// The value with exactly this raw value, upper and lower case told apart; none where there is no such one.
template <StoredEnumeration E>
[[nodiscard]] std::optional<E> fromRawValue(const QString& rawValue)
{
    for (const StoredCase<E>& entry : StoredCases<E>::cases) {
        if (rawValue == QString::fromUtf8(entry.rawValue))
            return entry.value;
    }
    return std::nullopt;
}

template <StoredEnumeration E>
[[nodiscard]] QList<E> allCases()
{
    QList<E> values;
    for (const StoredCase<E>& entry : StoredCases<E>::cases)
        values.append(entry.value);
    return values;
}

template <StoredEnumeration E>
[[nodiscard]] QStringList rawValues()
{
    QStringList texts;
    for (const E value : allCases<E>())
        texts.append(rawValue(value));
    return texts;
}

/// The title as it stands in the code, in no language but its own.
template <StoredEnumeration E>
[[nodiscard]] QString untranslatedTitle(E value)
{
    return QString::fromUtf8(detail::storedCase(value).title);
}

/// The text that the user reads. Thread as for `translate`.
template <StoredEnumeration E>
[[nodiscard]] QString title(E value)
{
    const StoredCase<E>& entry = detail::storedCase(value);
    return entry.form == TitleForm::asWritten ? untranslatedTitle(value) : translate(entry.title);
}

} // namespace tulvane
