#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <optional>

namespace tulvane {

class AppSettings;

/// Who stores a preference.
enum class SettingWriter {
    thisSystem,
    others, ///< loaded and shown, never stored: what another program has put there stays as it is
};

/// The whole numbers that the settings page can reach.
struct IntegerSteps {
    qint64 least = 0;
    qint64 most = 0;
    qint64 step = 1; ///< counted from `least`

    [[nodiscard]] bool contains(qint64 number) const
    {
        return number >= least && number <= most && (number - least) % step == 0;
    }
    /// In the command line's words.
    [[nodiscard]] QString description() const;
};

/// One value that the user may choose: its stored form and its title.
struct SettingChoice {
    QString rawValue;
    QString title;
};

/// One preference, whatever its type: what the command line and the pages need to show and change it. Values
/// are in stored form (QString, bool or qint64). Main thread. `Setting<T>` is the typed one.
class AnySetting : public QObject {
    Q_OBJECT

public:
    /// The key in the domain, and the name that the command line knows.
    [[nodiscard]] QString key() const { return m_key; }
    /// What the settings page calls it; empty where no page shows it under a name of its own. Main thread.
    [[nodiscard]] QString title() const;
    [[nodiscard]] SettingWriter writer() const { return m_writer; }

    [[nodiscard]] virtual QVariant value() const = 0;
    [[nodiscard]] virtual QVariant defaultValue() const = 0;
    /// What a stored value (invalid where nothing is stored) counts as. Never fails: the default stands for
    /// what is missing or makes no sense. No range is enforced.
    [[nodiscard]] virtual QVariant loaded(const QVariant& stored) const = 0;
    /// Assigns a value, as the settings page would. False, with nothing changed, for a preference that this
    /// system does not write and for a value of another form.
    [[nodiscard]] virtual bool setValue(const QVariant& value) = 0;

    /// The value that a written text stands for: a raw value, "true" or "false", a whole number, or the text
    /// itself. None where the preference does not permit it. A model identifier is one of `modelIDs`, the
    /// catalogue's.
    [[nodiscard]] virtual std::optional<QVariant> permitted(const QString& text,
                                                            const QStringList& modelIDs) const = 0;
    /// The permitted texts, for a message.
    [[nodiscard]] virtual QString permittedText(const QStringList& modelIDs) const = 0;
    /// Of an enumeration, in the order in which the user is offered them; else empty.
    [[nodiscard]] virtual QList<SettingChoice> choices() const { return {}; }
    /// Of a number that the user can change.
    [[nodiscard]] virtual std::optional<IntegerSteps> steps() const { return std::nullopt; }

Q_SIGNALS:
    /// The value was assigned, also where it is the one it was. It is stored after this.
    void changed();

protected:
    AnySetting(AppSettings& settings, const char* key, const char* title, SettingWriter writer);

    [[nodiscard]] QVariant stored() const;
    /// Tells the observers of the new value, then stores the one that holds by then.
    void publish();

private:
    AppSettings& m_settings;
    QString m_key;
    const char* m_title;
    SettingWriter m_writer;
};

} // namespace tulvane
