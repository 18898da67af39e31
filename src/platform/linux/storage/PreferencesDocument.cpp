#include <platform/linux/storage/PreferencesDocument.h>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <string>

namespace tulvane {

using Json = nlohmann::ordered_json;

struct PreferencesDocument::Tree {
    Json object = Json::object();
};

namespace {

// Writing walks the tree recursively; no preference nests anywhere near this deep.
constexpr int deepest = 200;

std::string utf8(const QString& text)
{
    return text.toStdString();
}

/// How deep brackets nest, without building anything.
int nesting(const QByteArray& text)
{
    int depth = 0;
    int most = 0;
    bool inString = false;
    for (qsizetype at = 0; at < text.size(); ++at) {
        const char c = text[at];
        if (inString && c == '\\')
            ++at;
        else if (c == '"')
            inString = !inString;
        else if (!inString && (c == '[' || c == '{'))
            most = std::max(most, ++depth);
        else if (!inString && (c == ']' || c == '}'))
            --depth;
    }
    return most;
}

QVariant fromJson(const Json& json)
{
    switch (json.type()) {
    case Json::value_t::boolean:
        return json.get<bool>();
    case Json::value_t::number_integer:
        return static_cast<qlonglong>(json.get<qint64>());
    case Json::value_t::number_unsigned: {
        const auto number = json.get<quint64>();
        const bool fits = number <= static_cast<quint64>(std::numeric_limits<qint64>::max());
        return fits ? QVariant(static_cast<qlonglong>(number)) : QVariant(static_cast<qulonglong>(number));
    }
    case Json::value_t::number_float:
        return json.get<double>();
    case Json::value_t::string:
        return QString::fromStdString(json.get_ref<const std::string&>());
    case Json::value_t::array: {
        QVariantList list;
        for (const Json& item : json)
            list.append(fromJson(item));
        return list;
    }
    case Json::value_t::object: {
        QVariantMap map;
        for (const auto& [key, item] : json.items())
            map.insert(QString::fromStdString(key), fromJson(item));
        return map;
    }
    default:
        return QVariant::fromValue(nullptr);
    }
}

Json toJson(const QVariant& value)
{
    switch (value.typeId()) {
    case QMetaType::Bool:
        return value.toBool();
    case QMetaType::LongLong:
        return value.toLongLong();
    case QMetaType::ULongLong:
        return value.toULongLong();
    case QMetaType::Double:
        return value.toDouble();
    case QMetaType::QString:
        return utf8(value.toString());
    case QMetaType::QVariantList: {
        Json list = Json::array();
        for (const QVariant& item : value.toList())
            list.push_back(toJson(item));
        return list;
    }
    case QMetaType::QVariantMap: {
        Json object = Json::object();
        const QVariantMap map = value.toMap();
        for (auto item = map.cbegin(); item != map.cend(); ++item)
            object[utf8(item.key())] = toJson(item.value());
        return object;
    }
    default:
        return nullptr;
    }
}

} // namespace

PreferencesDocument::PreferencesDocument() : m_tree(std::make_unique<Tree>()) {}
PreferencesDocument::PreferencesDocument(PreferencesDocument&&) noexcept = default;
PreferencesDocument& PreferencesDocument::operator=(PreferencesDocument&&) noexcept = default;
PreferencesDocument::~PreferencesDocument() = default;

Result<PreferencesDocument, QString> PreferencesDocument::parse(const QByteArray& text)
{
    PreferencesDocument document;
    if (text.trimmed().isEmpty())
        return document;
    // The library takes a zero byte for the end, and would drop whatever stands behind it.
    if (text.contains('\0'))
        return failure(QStringLiteral("zero bytes"));
    if (nesting(text) > deepest)
        return failure(QStringLiteral("nested too deep"));
    try {
        document.m_tree->object = Json::parse(text.cbegin(), text.cend());
    } catch (const Json::exception& exception) {
        return failure(QString::fromUtf8(exception.what()));
    }
    if (!document.m_tree->object.is_object())
        return failure(QStringLiteral("not an object"));
    return document;
}

PreferencesDocument PreferencesDocument::copy() const
{
    PreferencesDocument other;
    other.m_tree->object = m_tree->object;
    return other;
}

bool PreferencesDocument::isEmpty() const
{
    return m_tree->object.empty();
}

QVariant PreferencesDocument::value(const QString& key) const
{
    const auto item = m_tree->object.find(utf8(key));
    if (item == m_tree->object.end() || item->is_null())
        return {};
    return fromJson(*item);
}

QVariantMap PreferencesDocument::values() const
{
    QVariantMap map;
    for (const auto& [key, item] : m_tree->object.items()) {
        if (!item.is_null())
            map.insert(QString::fromStdString(key), fromJson(item));
    }
    return map;
}

void PreferencesDocument::set(const QString& key, const QVariant& value)
{
    m_tree->object[utf8(key)] = toJson(value);
}

void PreferencesDocument::remove(const QString& key)
{
    m_tree->object.erase(utf8(key));
}

QByteArray PreferencesDocument::text() const
{
    // Half a surrogate pair has no UTF-8 form; Qt has replaced it by now, and the library would throw.
    return QByteArray::fromStdString(m_tree->object.dump(2, ' ', false, Json::error_handler_t::replace)) +
           '\n';
}

} // namespace tulvane
