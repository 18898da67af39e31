#include <models/WhisperModel.h>

#include <array>
#include <utility>

namespace tulvane {

namespace {

constexpr std::array variants{std::pair{WhisperModel::Variant::standard, "standard"},
                              std::pair{WhisperModel::Variant::verbatim, "verbatim"},
                              std::pair{WhisperModel::Variant::semantic, "semantic"}};
constexpr std::array precisions{std::pair{WhisperModel::Precision::q5_0, "q5_0"},
                                std::pair{WhisperModel::Precision::f16, "f16"}};
constexpr std::array sizes{std::pair{WhisperModel::Size::small, "small"},
                           std::pair{WhisperModel::Size::medium, "medium"}};

template <class Table, class Value>
QString textOf(const Table& table, Value value)
{
    for (const auto& [each, text] : table) {
        if (each == value)
            return QString::fromLatin1(text);
    }
    Q_UNREACHABLE();
}

/// Reads fields one after the other; one that is wrong spoils the whole.
class Fields final {
public:
    explicit Fields(const QJsonObject& object) : m_object(object) {}

    [[nodiscard]] bool areGood() const { return m_good; }

    QString text(const char* key)
    {
        const QJsonValue value = m_object.value(QLatin1String(key));
        m_good = m_good && value.isString();
        return value.toString();
    }
    template <class Value, std::size_t Count>
    Value choice(const char* key, const std::array<std::pair<Value, const char*>, Count>& table)
    {
        const QString wanted = text(key);
        for (const auto& [value, name] : table) {
            if (wanted == QLatin1String(name))
                return value;
        }
        m_good = false;
        return table.front().first;
    }
    qint64 number(const char* key)
    {
        const QJsonValue value = m_object.value(QLatin1String(key));
        // toInteger gives its default for anything that is not a whole number.
        m_good = m_good && value.toInteger(0) == value.toInteger(1);
        return value.toInteger();
    }
    std::optional<QString> optionalText(const char* key)
    {
        const QJsonValue value = m_object.value(QLatin1String(key));
        return value.isUndefined() || value.isNull() ? std::nullopt : std::optional(text(key));
    }

private:
    const QJsonObject& m_object;
    bool m_good = true;
};

} // namespace

QJsonObject WhisperModel::toJson() const
{
    QJsonObject object{{QStringLiteral("id"), id},
                       {QStringLiteral("displayName"), displayName},
                       {QStringLiteral("variant"), textOf(variants, variant)},
                       {QStringLiteral("precision"), textOf(precisions, precision)},
                       {QStringLiteral("size"), textOf(sizes, size)},
                       {QStringLiteral("repo"), repo},
                       {QStringLiteral("fileName"), fileName},
                       {QStringLiteral("approximateSizeBytes"), approximateSizeBytes}};
    if (sha256)
        object.insert(QStringLiteral("sha256"), *sha256);
    return object;
}

std::optional<WhisperModel> WhisperModel::fromJson(const QJsonObject& object)
{
    Fields fields(object);
    WhisperModel model;
    model.id = fields.text("id");
    model.displayName = fields.text("displayName");
    model.variant = fields.choice("variant", variants);
    model.precision = fields.choice("precision", precisions);
    model.size = fields.choice("size", sizes);
    model.repo = fields.text("repo");
    model.fileName = fields.text("fileName");
    model.approximateSizeBytes = fields.number("approximateSizeBytes");
    model.sha256 = fields.optionalText("sha256");
    return fields.areGood() ? std::optional(model) : std::nullopt;
}

} // namespace tulvane
