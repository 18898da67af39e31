#include <base/Translate.h>
#include <platform/linux/desktop/LastingBus.h>
#include <platform/linux/gnome/GnomeHotkeys.h>
#include <platform/linux/gnome/GnomeLayout.h>
#include <platform/linux/keys/Accelerator.h>
#include <platform/linux/keys/KeyText.h>
#include <ports/KeyModifiers.h>

#include <QRegularExpression>

#include <array>

namespace tulvane {

namespace {

const QString& mediaKeys = CustomBindings::mediaKeys;
const QString& listName = CustomBindings::listName;
const QString& customSchema = CustomBindings::customSchema;
const QString ourPath =
    QStringLiteral("/org/gnome/settings-daemon/plugins/media-keys/custom-keybindings/tulvane/");
/// For the log: the desktop has no numbers of its own.
constexpr int heldElsewhere = 1;
/// What the settings said so long ago still counts, in milliseconds.
constexpr qint64 goodFor = 1000;
/// A longer description than this is none of a key.
constexpr qsizetype longestTitle = 90;

const QStringList& desktopSchemas()
{
    static const QStringList schemas{QStringLiteral("org.gnome.desktop.wm.keybindings"),
                                     QStringLiteral("org.gnome.shell.keybindings"),
                                     QStringLiteral("org.gnome.mutter.keybindings"),
                                     QStringLiteral("org.gnome.mutter.wayland.keybindings"), mediaKeys};
    return schemas;
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

const QString& GnomeHotkeys::path()
{
    return ourPath;
}

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
    if (const auto held = symbolicHotkeys(combination); !held.isEmpty())
        return failure(HotkeyError::takenBy(heldElsewhere, held.constFirst().title));
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
    return m_settings.set(mediaKeys, listName, GSettings::list(paths)) && isWritten(accelerator);
}

bool GnomeHotkeys::isWritten(const QString& accelerator) const
{
    const auto texts = [this](const QString& schema, const QString& name) {
        return GSettings::textsIn(m_settings.get(schema, name).value_or(QString()));
    };
    return texts(mediaKeys, listName).contains(ourPath) &&
           texts(customSchema + ourPath, QStringLiteral("binding")) == QStringList{accelerator};
}

void GnomeHotkeys::follow(std::shared_ptr<LastingBus> bus)
{
    m_bus = std::move(bus);
    QObject::connect(m_bus.get(), &LastingBus::returned, &m_context, [this] {
        m_knownSince.invalidate();
        const ChangeHandler handler = m_changeHandler;
        if (handler)
            handler();
    });
}

void GnomeHotkeys::add(const GSettings::Setting& setting, const QString& title, std::vector<Use>& uses) const
{
    const auto keyOf = [this](const QString& keysym) { return m_layout->keyForKeysym(keysym); };
    for (const QString& text : GSettings::textsIn(setting.value)) {
        if (const auto combination = fromGtkAccelerator(text, keyOf))
            uses.push_back({*combination, setting, title});
    }
}

QString GnomeHotkeys::titleOf(const GSettings::Setting& setting) const
{
    QString words = m_settings.describe(setting.schema, setting.name);
    if (words.endsWith(u'.'))
        words.chop(1);
    // Not everything is described; the setting's name is made of words, too.
    if (words.isEmpty() || words.size() > longestTitle || words.contains(u'\n'))
        words = QString(setting.name).replace(u'-', u' ');
    return QStringLiteral("GNOME (%1)").arg(words);
}

QList<SymbolicHotkey> GnomeHotkeys::symbolicHotkeys(const KeyCombination& about)
{
    if (!support())
        return {};
    // A search for a free combination asks many times at once.
    if (!m_knownSince.isValid() || m_knownSince.hasExpired(goodFor)) {
        m_known = readUses();
        m_knownSince.start();
    }
    QList<SymbolicHotkey> found;
    for (const Use& use : m_known) {
        if (use.combination == about)
            found.append({true, about, use.title.isEmpty() ? titleOf(use.setting) : use.title});
    }
    return found;
}

std::vector<GnomeHotkeys::Use> GnomeHotkeys::readUses() const
{
    std::vector<Use> uses;
    for (const GSettings::Setting& setting : m_settings.all(desktopSchemas())) {
        if (setting.name != listName)
            add(setting, {}, uses);
    }
    for (const CustomBindings::Binding& own : CustomBindings(m_settings).besides(ourPath)) {
        const QString title = own.name.isEmpty() ? own.command : own.name;
        add({.name = listName, .value = GSettings::text(own.keys), .schema = mediaKeys}, title, uses);
    }
    return uses;
}

KeyDisplay GnomeHotkeys::display(const KeyCombination& combination) const
{
    return linuxKeyDisplay(
        combination, [this](const VirtualKey& key) { return m_layout ? m_layout->label(key) : QString(); });
}

} // namespace tulvane
