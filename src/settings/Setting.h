#pragma once

#include <settings/AnySetting.h>
#include <settings/StoredForm.h>

#include <concepts>
#include <utility>

namespace tulvane {

/// How a stored boolean is read.
enum class BooleanReading {
    strict, ///< anything but a boolean reads as the default
    plain,  ///< as the plain accessor of user defaults reads it
};

/// The texts that a preference takes from the user.
enum class PermittedTexts { any, modelIDs };

/// All there is to say about one preference.
template <class T>
struct SettingRow {
    const char* key = nullptr;
    T defaultValue;
    const char* title = nullptr;            ///< a key of the catalogues, where the settings page has one
    std::optional<IntegerSteps> steps = {}; ///< of a number that the user can change
    BooleanReading reading = BooleanReading::strict; ///< of a boolean
    PermittedTexts texts = PermittedTexts::any;      ///< of a text
};

/// One preference: `settings.language()` reads it, `settings.language.set(...)` tells all observers of the
/// new value, then stores it, also when it is the one it was. Nothing is clamped or checked. Loaded once,
/// when it is made. Main thread.
template <class T, SettingWriter Writer = SettingWriter::thisSystem>
class Setting final : public AnySetting {
public:
    Setting(AppSettings& settings, SettingRow<T> row)
        : AnySetting(settings, row.key, row.title, Writer),
          m_row(std::move(row)),
          m_value(load(stored()))
    {
    }

    [[nodiscard]] T operator()() const { return m_value; }

    void set(const T& value)
        requires(Writer == SettingWriter::thisSystem)
    {
        m_value = value;
        publish();
    }

    [[nodiscard]] QVariant value() const override { return Form::of(m_value); }
    [[nodiscard]] QVariant defaultValue() const override { return Form::of(m_row.defaultValue); }
    [[nodiscard]] QVariant loaded(const QVariant& stored) const override { return Form::of(load(stored)); }

    [[nodiscard]] bool setValue(const QVariant& value) override
    {
        if constexpr (Writer == SettingWriter::thisSystem) {
            if (const std::optional<T> exact = Form::exact(value)) {
                set(*exact);
                return true;
            }
        }
        return false;
    }

    [[nodiscard]] std::optional<QVariant> permitted(const QString& text,
                                                    const QStringList& modelIDs) const override
    {
        if (m_row.texts == PermittedTexts::modelIDs && !modelIDs.contains(text))
            return std::nullopt;
        const std::optional<T> value = Form::written(text);
        if (!value || !isReachable(*value))
            return std::nullopt;
        return Form::of(*value);
    }

    [[nodiscard]] QString permittedText(const QStringList& modelIDs) const override
    {
        if constexpr (std::same_as<T, bool>)
            return QStringLiteral("true, false");
        else if constexpr (std::same_as<T, QString>)
            return modelIDs.join(QStringLiteral(", "));
        else if constexpr (std::same_as<T, qint64>)
            return m_row.steps.value_or(IntegerSteps{}).description();
        else
            return rawValues<T>().join(QStringLiteral(", "));
    }

    [[nodiscard]] QList<SettingChoice> choices() const override
    {
        QList<SettingChoice> all;
        if constexpr (StoredEnumeration<T>) {
            for (const T value : allCases<T>())
                all.append({rawValue(value), tulvane::title(value)});
        }
        return all;
    }

    [[nodiscard]] std::optional<IntegerSteps> steps() const override { return m_row.steps; }

private:
    using Form = StoredForm<T>;

    [[nodiscard]] T load(const QVariant& stored) const
    {
        if constexpr (std::same_as<T, bool>) {
            if (m_row.reading == BooleanReading::plain)
                return plainBoolean(stored);
        }
        return Form::loaded(stored).value_or(m_row.defaultValue);
    }

    /// Whether the settings page could choose the value.
    [[nodiscard]] bool isReachable([[maybe_unused]] const T& value) const
    {
        if constexpr (std::same_as<T, qint64>)
            return m_row.steps && m_row.steps->contains(value);
        return true;
    }

    SettingRow<T> m_row;
    T m_value;
};

} // namespace tulvane
