#pragma once

#include <QProcessEnvironment>

#include <initializer_list>
#include <utility>

namespace tulvane::test {

/// An environment of these variables alone.
[[nodiscard]] inline QProcessEnvironment
environment(std::initializer_list<std::pair<const char*, const char*>> variables)
{
    QProcessEnvironment result;
    for (const auto& [name, value] : variables)
        result.insert(QString::fromUtf8(name), QString::fromUtf8(value));
    return result;
}

} // namespace tulvane::test
