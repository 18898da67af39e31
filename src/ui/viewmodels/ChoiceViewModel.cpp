#include <ui/viewmodels/ChoiceViewModel.h>

namespace tulvane {

ChoiceViewModel::ChoiceViewModel(AnySetting& setting, QObject* parent, std::function<void()> changedByUser)
    : QObject(parent),
      m_setting(setting),
      m_changedByUser(std::move(changedByUser))
{
    connect(&setting, &AnySetting::changed, this, &ChoiceViewModel::valueChanged);
}

QVariantList ChoiceViewModel::options() const
{
    QVariantList options;
    for (const SettingChoice& choice : choices())
        options.append(
            QVariantMap{{QStringLiteral("value"), choice.rawValue}, {QStringLiteral("title"), choice.title}});
    return options;
}

void ChoiceViewModel::setValue(const QString& value)
{
    const QString before = this->value();
    if (m_setting.setValue(value) && value != before && m_changedByUser)
        m_changedByUser();
}

} // namespace tulvane
