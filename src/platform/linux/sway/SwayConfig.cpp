#include <platform/linux/sway/SwayConfig.h>
#include <ports/KeyModifiers.h>
#include <ports/VirtualKeys.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonObject>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>
#include <array>
#include <optional>

namespace tulvane {

namespace {

constexpr quint32 evdevToXkb = 8;

std::optional<quint32> modifierOf(const QString& word)
{
    struct Word {
        const char* text;
        quint32 modifier;
    };
    constexpr std::array words{Word{"Shift", carbon::shift},   Word{"Control", carbon::control},
                               Word{"Ctrl", carbon::control},  Word{"Alt", carbon::option},
                               Word{"Mod1", carbon::option},   Word{"Mod4", carbon::command},
                               Word{"Super", carbon::command}, Word{"Logo", carbon::command}};
    const auto found = std::ranges::find_if(words, [&](const Word& one) {
        return word.compare(QLatin1StringView(one.text), Qt::CaseInsensitive) == 0;
    });
    return found == words.end() ? std::nullopt : std::optional(found->modifier);
}

/// Reads a configuration line by line.
class Reader final {
public:
    explicit Reader(const KeyLookup& keyOf) : m_keyOf(keyOf) {}

    void read(const QString& text)
    {
        QString joined = text;
        joined.replace(QStringLiteral("\\\n"), QString());
        for (const QString& line : joined.split(u'\n'))
            readLine(withVariables(line.trimmed()));
    }
    [[nodiscard]] const QList<SymbolicHotkey>& found() const { return m_found; }

private:
    /// Which block the line stands in: the commands of one that binds keys go without the word.
    enum class Block { none, bindsym, bindcode, other };

    [[nodiscard]] QString withVariables(QString line) const
    {
        // Longer names first: one may begin with another.
        for (const auto& [name, value] : m_variables)
            line.replace(name, value);
        return line;
    }
    void readLine(const QString& line)
    {
        if (line.isEmpty() || line.startsWith(u'#'))
            return;
        if (line.startsWith(u'}')) {
            m_block = Block::none;
            return;
        }
        const QString word = line.section(u' ', 0, 0);
        const QString rest = line.section(u' ', 1).trimmed();
        if (line.endsWith(u'{'))
            m_block = word == u"bindsym"    ? Block::bindsym
                      : word == u"bindcode" ? Block::bindcode
                                            : Block::other;
        else if (m_block == Block::bindsym || m_block == Block::bindcode)
            bind(line, m_block == Block::bindcode);
        else if (m_block == Block::none && word == u"set")
            setVariable(rest.section(u' ', 0, 0), rest.section(u' ', 1).trimmed());
        else if (m_block == Block::none && (word == u"bindsym" || word == u"bindcode"))
            bind(rest, word == u"bindcode");
    }
    void setVariable(const QString& name, const QString& value)
    {
        m_variables.removeIf([&](const auto& one) { return one.first == name; });
        m_variables.append({name, value});
        std::ranges::stable_sort(m_variables, std::greater(),
                                 [](const auto& one) { return one.first.size(); });
    }
    void bind(QString text, bool isCode)
    {
        while (text.startsWith(QLatin1StringView("--")))
            text = text.section(u' ', 1).trimmed();
        KeyCombination combination;
        bool hasKey = false;
        for (const QString& part : text.section(u' ', 0, 0).split(u'+')) {
            if (const auto modifier = modifierOf(part)) {
                combination.modifiers |= *modifier;
                continue;
            }
            const auto key = isCode ? keyOfCode(part) : m_keyOf(part);
            if (!key || std::exchange(hasKey, true))
                return;
            combination.keyCode = *key;
        }
        const QString command = text.section(u' ', 1).trimmed();
        if (hasKey)
            m_found.append({true, combination, command});
    }
    [[nodiscard]] static std::optional<quint32> keyOfCode(const QString& text)
    {
        const quint32 code = text.toUInt();
        const VirtualKey* const key = code > evdevToXkb ? virtualKeys::byEvdev(code - evdevToXkb) : nullptr;
        return key ? std::optional(key->code) : std::nullopt;
    }

    const KeyLookup& m_keyOf;
    QList<std::pair<QString, QString>> m_variables;
    QList<SymbolicHotkey> m_found;
    Block m_block = Block::none;
};

/// The files that an include means: a path with a leading ~ or variables, relative to the configuration, with
/// wildcards.
QStringList filesOf(QString include, const QString& folder)
{
    if (include.startsWith(u'~'))
        include.replace(0, 1, QDir::homePath());
    static const QRegularExpression variable(QStringLiteral("\\$\\{?(\\w+)\\}?"));
    for (auto match = variable.match(include); match.hasMatch(); match = variable.match(include))
        include.replace(match.capturedStart(), match.capturedLength(),
                        qEnvironmentVariable(match.captured(1).toLatin1().constData()));
    const QFileInfo path(QDir(folder), include);
    QStringList files;
    for (const QString& name : path.dir().entryList({path.fileName()}, QDir::Files, QDir::Name))
        files.append(path.dir().filePath(name));
    return files;
}

} // namespace

QString wholeSwayConfiguration(SwayConnection& connection)
{
    const auto answer = connection.ask(SwayConnection::Question::config);
    const auto version = connection.ask(SwayConnection::Question::version);
    if (!answer || !version)
        return {};
    QString text = answer->object().value(QLatin1StringView("config")).toString();
    const QString main = version->object().value(QLatin1StringView("loaded_config_file_name")).toString();
    const QString folder = QFileInfo(main).path();
    QSet<QString> seen{main};
    for (QStringList includes = swayIncludes(text); !includes.isEmpty();) {
        for (const QString& path : filesOf(includes.takeFirst(), folder)) {
            QFile file(path);
            if (seen.contains(path) || !file.open(QIODevice::ReadOnly))
                continue;
            seen.insert(path);
            const QString more = QString::fromUtf8(file.readAll());
            text += u'\n' + more;
            includes += swayIncludes(more);
        }
    }
    return text;
}

QList<SymbolicHotkey> readSwayBindings(const QString& configuration, const KeyLookup& keyOf)
{
    Reader reader(keyOf);
    reader.read(configuration);
    return reader.found();
}

QStringList swayIncludes(const QString& configuration)
{
    static const QRegularExpression line(QStringLiteral("^\\s*include\\s+(.+?)\\s*$"),
                                         QRegularExpression::MultilineOption);
    QStringList paths;
    for (const auto& match : line.globalMatch(configuration))
        paths.append(match.captured(1));
    return paths;
}

} // namespace tulvane
