#include <platform/linux/gnome/CustomBindings.h>

#include <QRegularExpression>

#include <algorithm>

namespace tulvane {

namespace {

/// What the settings said so long ago still counts, in milliseconds.
constexpr qint64 toggleGoodFor = 5000;

} // namespace

const QString CustomBindings::mediaKeys = QStringLiteral("org.gnome.settings-daemon.plugins.media-keys");
const QString CustomBindings::listName = QStringLiteral("custom-keybindings");
const QString CustomBindings::customSchema = mediaKeys + QStringLiteral(".custom-keybinding:");

CustomBindings::Binding CustomBindings::read(const QString& path) const
{
    Binding binding{.path = path, .name = {}, .command = {}, .keys = {}};
    for (const GSettings::Setting& setting : m_settings.all({customSchema + path})) {
        const QString text = GSettings::textsIn(setting.value).value(0);
        if (setting.name == QLatin1StringView("name"))
            binding.name = text;
        else if (setting.name == QLatin1StringView("command"))
            binding.command = text;
        else if (setting.name == QLatin1StringView("binding"))
            binding.keys = text;
    }
    return binding;
}

std::vector<CustomBindings::Binding> CustomBindings::besides(const QString& ours) const
{
    std::vector<Binding> found;
    for (const QString& path : GSettings::textsIn(m_settings.get(mediaKeys, listName).value_or(QString()))) {
        if (path != ours)
            found.push_back(read(path));
    }
    return found;
}

bool CustomBindings::haveToggleBesides(const QString& ours)
{
    if (!m_knownSince.isValid() || m_knownSince.hasExpired(toggleGoodFor)) {
        m_hasToggle = std::ranges::any_of(besides(ours), [](const Binding& binding) {
            return !binding.keys.isEmpty() && isToggle(binding.command);
        });
        m_knownSince.start();
    }
    return m_hasToggle;
}

bool CustomBindings::isToggle(const QString& command)
{
    static const QRegularExpression words(QStringLiteral(R"((^|[/\s'"])tulvane['"]?\s+toggle(['"\s]|$))"));
    return words.match(command).hasMatch();
}

} // namespace tulvane
