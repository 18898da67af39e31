#include <base/Translate.h>
#include <ports/UserDefaults.h>
#include <settings/AnySetting.h>
#include <settings/AppSettings.h>

namespace tulvane {

QString IntegerSteps::description() const
{
    return QStringLiteral("%1 to %2 in steps of %3").arg(least).arg(most).arg(step);
}

AnySetting::AnySetting(AppSettings& settings, const char* key, const char* title, SettingWriter writer)
    : m_settings(settings),
      m_key(QString::fromLatin1(key)),
      m_title(title),
      m_writer(writer)
{
    settings.m_all.append(this);
}

QString AnySetting::title() const
{
    return m_title == nullptr ? QString() : translate(m_title);
}

QVariant AnySetting::stored() const
{
    return m_settings.defaults().value(m_key);
}

void AnySetting::publish()
{
    Q_EMIT changed();
    // Asked for again: an observer may have assigned another value meanwhile, and what is stored must equal
    // what is live.
    m_settings.store(m_key, value());
}

} // namespace tulvane
