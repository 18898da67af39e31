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
    };

    explicit GSettings(QProcessEnvironment environment) : m_environment(std::move(environment)) {}

    /// `schema` may have a path behind a colon. None where there is no such setting.
    [[nodiscard]] std::optional<QString> get(const QString& schema, const QString& name) const;
    bool set(const QString& schema, const QString& name, const QString& value) const;
    void reset(const QString& schema) const;
    /// Every setting of a schema.
    [[nodiscard]] std::vector<Setting> all(const QString& schema) const;

    /// The texts in a value: of one text, or of a list of texts.
    [[nodiscard]] static QStringList textsIn(const QString& value);
    /// A text, and a list of texts, as a value.
    [[nodiscard]] static QString text(const QString& text);
    [[nodiscard]] static QString list(const QStringList& texts);

private:
    [[nodiscard]] std::optional<QString> run(const QStringList& words) const;

    QProcessEnvironment m_environment;
};

} // namespace tulvane
