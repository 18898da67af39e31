#include <hotkeys/Shortcut.h>
#include <ports/KeyModifiers.h>

#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>
#include <utility>

namespace tulvane {

namespace {

std::optional<qint64> integer(const QJsonValue& value)
{
    if (!value.isDouble())
        return std::nullopt;
    const QVariant number = value.toVariant();
    if (number.typeId() == QMetaType::LongLong)
        return number.toLongLong();
    // 49.0 is the integer 49 in JSON; the bound keeps the conversion exact.
    constexpr double exact = 9007199254740992.0;
    const double real = value.toDouble();
    if (std::trunc(real) != real || std::abs(real) > exact)
        return std::nullopt;
    return static_cast<qint64>(real);
}

} // namespace

Shortcut Shortcut::fromFlags(qint64 keyCode, quint64 flags)
{
    return {keyCode, tulvane::carbonModifiers(flags)};
}

Shortcut Shortcut::fromCombination(const KeyCombination& combination)
{
    return {combination.keyCode, combination.modifiers};
}

std::optional<Shortcut> Shortcut::fromJson(const QString& json)
{
    const QJsonObject object = QJsonDocument::fromJson(json.toUtf8()).object();
    const auto keyCode = integer(object.value(QLatin1String("carbonKeyCode")));
    const auto modifiers = integer(object.value(QLatin1String("carbonModifiers")));
    if (!keyCode || !modifiers)
        return std::nullopt;
    return Shortcut{*keyCode, *modifiers};
}

QString Shortcut::toJson() const
{
    return QStringLiteral("{\"carbonKeyCode\":%1,\"carbonModifiers\":%2}")
        .arg(carbonKeyCode)
        .arg(carbonModifiers);
}

std::optional<KeyCombination> Shortcut::combination() const
{
    if (!std::in_range<quint32>(carbonKeyCode) || !std::in_range<quint32>(carbonModifiers))
        return std::nullopt;
    return KeyCombination{static_cast<quint32>(carbonKeyCode), static_cast<quint32>(carbonModifiers)};
}

} // namespace tulvane
