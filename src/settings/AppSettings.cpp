#include <ports/Presentation.h>
#include <ports/UserDefaults.h>
#include <settings/AppSettings.h>

#include <QPointer>

#include <algorithm>
#include <optional>
#include <utility>

namespace tulvane {

namespace {

/// No preference of ours: the system's own list of interface languages for this application, best first.
const QString appleLanguages = QStringLiteral("AppleLanguages");

/// The first of an array of strings; none where it is empty, or where something else is stored.
std::optional<QString> firstString(const QVariant& stored)
{
    if (stored.typeId() != QMetaType::QVariantList)
        return std::nullopt;
    const QVariantList list = stored.toList();
    for (const QVariant& item : list) {
        if (item.typeId() != QMetaType::QString)
            return std::nullopt;
    }
    return list.isEmpty() ? std::nullopt : std::optional(list.first().toString());
}

} // namespace

AppSettings::AppSettings(UserDefaults& defaults, QObject* parent) : QObject(parent), m_defaults(defaults)
{
    defaults.setTroubleHandler([self = QPointer(this)](const DefaultsError& error) {
        if (!self)
            return;
        self->m_trouble = error;
        Q_EMIT self->troubled(error);
    });
}

AnySetting* AppSettings::find(const QString& key) const
{
    const auto found = std::ranges::find(m_all, key, &AnySetting::key);
    return found == m_all.end() ? nullptr : *found;
}

void AppSettings::store(const QString& key, const QVariant& value)
{
    const Result<void, DefaultsError> stored = m_defaults.set(key, value);
    if (!stored)
        Q_EMIT writeFailed(key, stored.error());
    if (key == appLanguage.key())
        syncInterfaceLanguage();
}

void AppSettings::syncInterfaceLanguage()
{
    const QString code = appLanguage.loaded(m_defaults.value(appLanguage.key())).toString();
    if (firstString(m_defaults.value(appleLanguages)) != code)
        store(appleLanguages, QStringList{code});
}

void AppSettings::installAppearanceObserver(Presentation& presentation)
{
    applyAppearance(presentation, appearance());
    connect(&appearance, &AnySetting::changed, this, [this, &presentation, applied = appearance()]() mutable {
        if (std::exchange(applied, appearance()) != appearance())
            applyAppearance(presentation, appearance());
    });
}

void applyAppearance(Presentation& presentation, AppearanceMode mode)
{
    Appearance appearance = Appearance::none;
    if (mode == AppearanceMode::light)
        appearance = Appearance::light;
    else if (mode == AppearanceMode::dark)
        appearance = Appearance::dark;
    presentation.setAppearance(appearance);
}

} // namespace tulvane
