#include <base/Translate.h>
#include <ui/viewmodels/MainViewModel.h>

namespace tulvane {

MainViewModel::MainViewModel(SettingsSelection& selection, const QString& version, QObject* parent)
    : QObject(parent),
      m_selection(selection),
      m_version(translate("Version ") + version)
{
}

QVariantList MainViewModel::entries()
{
    QVariantList list;
    for (const SettingsTab tab : allCases<SettingsTab>())
        list.append(QVariantMap{{QStringLiteral("page"), static_cast<int>(tab)},
                                {QStringLiteral("name"), rawValue(tab)},
                                {QStringLiteral("title"), title(tab)},
                                {QStringLiteral("symbol"), symbol(tab)}});
    return list;
}

QString MainViewModel::titleOf(SettingsSelection::Page page) const
{
    return title(static_cast<SettingsTab>(page));
}

} // namespace tulvane
