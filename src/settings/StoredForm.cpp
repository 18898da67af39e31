#include <settings/StoredForm.h>

namespace tulvane {

namespace {

bool isNumber(const QVariant& value)
{
    const int type = value.typeId();
    return type == QMetaType::LongLong || type == QMetaType::ULongLong || type == QMetaType::Double;
}

} // namespace

std::optional<QString> StoredForm<QString>::exact(const QVariant& stored)
{
    return stored.typeId() == QMetaType::QString ? std::optional(stored.toString()) : std::nullopt;
}

std::optional<QString> StoredForm<QString>::loaded(const QVariant& stored)
{
    return isNumber(stored) ? stored.toString() : exact(stored);
}

std::optional<bool> StoredForm<bool>::exact(const QVariant& stored)
{
    return stored.typeId() == QMetaType::Bool ? std::optional(stored.toBool()) : std::nullopt;
}

std::optional<bool> StoredForm<bool>::written(const QString& text)
{
    const bool isOne = text == u"true" || text == u"false";
    return isOne ? std::optional(text == u"true") : std::nullopt;
}

std::optional<qint64> StoredForm<qint64>::exact(const QVariant& stored)
{
    return stored.typeId() == QMetaType::LongLong ? std::optional(stored.toLongLong()) : std::nullopt;
}

std::optional<qint64> StoredForm<qint64>::written(const QString& text)
{
    const qint64 number = text.toLongLong();
    return QString::number(number) == text ? std::optional(number) : std::nullopt;
}

bool plainBoolean(const QVariant& stored)
{
    if (stored.typeId() == QMetaType::Bool)
        return stored.toBool();
    if (isNumber(stored))
        return stored.toDouble() != 0.0;
    const QString text = stored.typeId() == QMetaType::QString ? stored.toString() : QString();
    return text.compare(u"yes", Qt::CaseInsensitive) == 0 || text.compare(u"true", Qt::CaseInsensitive) == 0;
}

} // namespace tulvane
