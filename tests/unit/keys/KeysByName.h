#pragma once

#include <QHash>
#include <QString>

#include <optional>

namespace tulvane::test {

/// A keyboard that has a few keys, by the names of their keysyms.
[[nodiscard]] inline std::optional<quint32> keyByName(const QString& keysym)
{
    static const QHash<QString, quint32> keys{
        {QStringLiteral("space"), 49},    {QStringLiteral("F2"), 120},
        {QStringLiteral("F4"), 118},      {QStringLiteral("Page_Up"), 116},
        {QStringLiteral("t"), 17},        {QStringLiteral("T"), 17},
        {QStringLiteral("e"), 14},        {QStringLiteral("E"), 14},
        {QStringLiteral("Escape"), 53},   {QStringLiteral("Tab"), 48},
        {QStringLiteral("+"), 24},        {QStringLiteral("-"), 27},
        {QStringLiteral(","), 43},        {QStringLiteral("Delete"), 117},
        {QStringLiteral("KP_Enter"), 76}, {QStringLiteral("XF86AudioRaiseVolume"), 72},
    };
    const auto found = keys.constFind(keysym);
    return found == keys.cend() ? std::nullopt : std::optional(*found);
}

} // namespace tulvane::test
