#pragma once

#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

#include <optional>
#include <utility>
#include <vector>

namespace tulvane {

/// GNOME's settings by its own tool, in its own words: `['<Alt>space']`. Every call waits for a process, some
/// milliseconds. Main thread; not often.
class GSettings final {
public:
    struct Setting {
        QString name;
        QString value;
        QString schema = {}; ///< where it was found, among those that were read
    };

    explicit GSettings(QProcessEnvironment environment) : m_environment(std::move(environment)) {}

    /// `schema` may have a path behind a colon. None where there is no such setting.
    [[nodiscard]] std::optional<QString> get(const QString& schema, const QString& name) const;
    bool set(const QString& schema, const QString& name, const QString& value) const;
    /// Several of one schema at once; false where any was not taken.
    [[nodiscard]] bool set(const QString& schema, const std::vector<Setting>& settings) const;
    void reset(const QString& schema) const;
    /// What the desktop says of a setting, in the user's language; empty where it says nothing.
    [[nodiscard]] QString describe(const QString& schema, const QString& name) const;
    /// Every setting of these schemas, read at once.
    [[nodiscard]] std::vector<Setting> all(const QStringList& schemas) const;

    /// The texts in a value: of one text, or of a list of texts.
    [[nodiscard]] static QStringList textsIn(const QString& value);
    /// A text, and a list of texts, as a value.
    [[nodiscard]] static QString text(const QString& text);
    [[nodiscard]] static QString list(const QStringList& texts);

private:
    using Answers = std::vector<std::optional<QString>>;
    /// Each in a process of its own, side by side.
    [[nodiscard]] Answers run(const QList<QStringList>& calls) const;

    QProcessEnvironment m_environment;
};

} // namespace tulvane
