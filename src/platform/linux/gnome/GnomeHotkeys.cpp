#include <base/Translate.h>
#include <platform/linux/gnome/GnomeHotkeys.h>
#include <platform/linux/gnome/GnomeLayout.h>
#include <platform/linux/keys/Accelerator.h>
#include <platform/linux/keys/KeyText.h>
#include <ports/KeyModifiers.h>

#include <QRegularExpression>

#include <algorithm>
#include <array>

namespace tulvane {

namespace {

const QString mediaKeys = QStringLiteral("org.gnome.settings-daemon.plugins.media-keys");
const QString listName = QStringLiteral("custom-keybindings");
const QString customSchema = mediaKeys + QStringLiteral(".custom-keybinding:");
const QString ourPath =
    QStringLiteral("/org/gnome/settings-daemon/plugins/media-keys/custom-keybindings/tulvane/");
/// For the log: the desktop has no numbers of its own.
constexpr int heldElsewhere = 1;
/// What the settings said so long ago still counts, in milliseconds.
constexpr qint64 goodFor = 1000;

const QStringList desktopSchemas{QStringLiteral("org.gnome.desktop.wm.keybindings"),
                                 QStringLiteral("org.gnome.shell.keybindings"),
                                 QStringLiteral("org.gnome.mutter.keybindings"),
                                 QStringLiteral("org.gnome.mutter.wayland.keybindings"), mediaKeys};

/// "activate-window-menu" as words, and whose it is.
QString titleOf(const QString& name)
{
    QString title = name;
    title.replace(u'-', u' ');
    return QStringLiteral("GNOME (%1)").arg(title);
}

} // namespace

class GnomeHotkeys::Token final : public Registration {
public:
    Token(GSettings settings, std::shared_ptr<bool> isBound)
        : m_settings(std::move(settings)),
          m_isBound(std::move(isBound))
    {
    }
    Token(const Token&) = delete;
    Token& operator=(const Token&) = delete;
    ~Token() override
    {
        if (!m_isBound)
            return;
        *m_isBound = false;
        QStringList paths = GSettings::textsIn(m_settings.get(mediaKeys, listName).value_or(QString()));
        paths.removeAll(ourPath);
        m_settings.set(mediaKeys, listName, GSettings::list(paths));
        m_settings.reset(customSchema + ourPath);
    }

private:
    GSettings m_settings;
    std::shared_ptr<bool> m_isBound; ///< null for one that is only tried
};

GnomeHotkeys::GnomeHotkeys(const QProcessEnvironment& environment, QString command, Choices choices)
    : m_settings(environment),
      m_command(std::move(command)),
      m_choices(std::move(choices)),
      m_layout(GnomeLayout::read(m_settings))
{
}

GnomeHotkeys::GnomeHotkeys(const QProcessEnvironment& environment, QString command)
    : GnomeHotkeys(environment, std::move(command), Choices())
{
}

GnomeHotkeys::~GnomeHotkeys() = default;

QString GnomeHotkeys::commandOf(const QString& program, const QString& word)
{
    QString file = program.isEmpty() ? QStringLiteral("tulvane") : program;
    // The words of it are taken apart as a shell does.
    static const QRegularExpression plain(QStringLiteral("^[\\w/.+-]+$"));
    if (!plain.match(file).hasMatch())
        file = u'\'' + file.replace(u'\'', QStringLiteral("'\\''")) + u'\'';
    return file + u' ' + word;
}

Result<void, HotkeyError> GnomeHotkeys::support() const
{
    m_isSupported = m_isSupported || (m_layout && m_settings.get(mediaKeys, listName));
    if (!m_isSupported) {
        return failure(HotkeyError::unsupported(translate(
            "This desktop keeps key bindings nowhere that Tulvane knows. Bind a key to “tulvane toggle” in "
            "its settings.")));
    }
    return {};
}

QString GnomeHotkeys::acceleratorOf(const KeyCombination& combination) const
{
    const VirtualKey* const key = virtualKeys::byCode(combination.keyCode);
    const QString name = key != nullptr && m_layout ? m_layout->keysymName(*key) : QString();
    if (name.isEmpty())
        return {};
    QString accelerator;
    for (const auto& [modifier, word] :
         std::array{std::pair(carbon::command, "<Super>"), std::pair(carbon::control, "<Control>"),
                    std::pair(carbon::option, "<Alt>"), std::pair(carbon::shift, "<Shift>")}) {
        if ((combination.modifiers & modifier) != 0)
            accelerator += QString::fromUtf8(word);
    }
    return accelerator + name;
}

Result<std::unique_ptr<GlobalHotkeys::Registration>, HotkeyError>
GnomeHotkeys::registerHotkey(HotkeyId id, const KeyCombination& combination)
{
    if (const auto supported = support(); !supported)
        return failure(supported.error());
    const QString accelerator = acceleratorOf(combination);
    if (accelerator.isEmpty())
        return failure(HotkeyError::noSuchKey());
    const auto held = symbolicHotkeys(combination);
    const auto holder = std::ranges::find(held, combination, &SymbolicHotkey::combination);
    if (holder != held.end())
        return failure(HotkeyError::takenBy(heldElsewhere, holder->title));
    if (id.id == 0) // only tried
        return std::make_unique<Token>(m_settings, nullptr);
    if (!m_choices.isMade(combination))
        return failure(HotkeyError::unchosen());
    if (*m_isBound)
        return failure(HotkeyError::taken(heldElsewhere));
    if (!bind(accelerator))
        return failure(HotkeyError::refused(heldElsewhere));
    *m_isBound = true;
    return std::make_unique<Token>(m_settings, m_isBound);
}

bool GnomeHotkeys::bind(const QString& accelerator) const
{
    const QString schema = customSchema + ourPath;
    // The name is what the user reads in the settings.
    if (!m_settings.set(schema,
                        {{QStringLiteral("name"), GSettings::text(translate("Start or stop dictation"))},
                         {QStringLiteral("command"), GSettings::text(m_command)},
                         {QStringLiteral("binding"), GSettings::text(accelerator)}}))
        return false;
    QStringList paths = GSettings::textsIn(m_settings.get(mediaKeys, listName).value_or(QString()));
    paths.removeAll(ourPath);
    paths.append(ourPath);
    return m_settings.set(mediaKeys, listName, GSettings::list(paths));
}

void GnomeHotkeys::addFrom(const GSettings::Setting& setting, const QString& title,
                           QList<SymbolicHotkey>& found) const
{
    const auto keyOf = [this](const QString& keysym) { return m_layout->keyForKeysym(keysym); };
    for (const QString& text : GSettings::textsIn(setting.value)) {
        if (const auto combination = fromGtkAccelerator(text, keyOf))
            found.append({true, *combination, title});
    }
}

QList<SymbolicHotkey> GnomeHotkeys::symbolicHotkeys(const KeyCombination&)
{
    if (!support())
        return {};
    // A search for a free combination asks many times at once.
    if (!m_knownSince.isValid() || m_knownSince.hasExpired(goodFor)) {
        m_known = readHotkeys();
        m_knownSince.start();
    }
    return m_known;
}

QList<SymbolicHotkey> GnomeHotkeys::readHotkeys() const
{
    QList<SymbolicHotkey> found;
    for (const GSettings::Setting& setting : m_settings.all(desktopSchemas)) {
        if (setting.name == listName)
            addCustom(GSettings::textsIn(setting.value), found);
        else
            addFrom(setting, titleOf(setting.name), found);
    }
    return found;
}

void GnomeHotkeys::addCustom(const QStringList& paths, QList<SymbolicHotkey>& found) const
{
    for (const QString& path : paths) {
        if (path == ourPath)
            continue;
        QString title;
        std::optional<GSettings::Setting> binding;
        for (const GSettings::Setting& setting : m_settings.all({customSchema + path})) {
            if (setting.name == QLatin1StringView("name"))
                title = GSettings::textsIn(setting.value).value(0);
            else if (setting.name == QLatin1StringView("binding"))
                binding = setting;
        }
        if (binding)
            addFrom(*binding, title, found);
    }
}

KeyDisplay GnomeHotkeys::display(const KeyCombination& combination) const
{
    return linuxKeyDisplay(
        combination, [this](const VirtualKey& key) { return m_layout ? m_layout->label(key) : QString(); });
}

} // namespace tulvane
