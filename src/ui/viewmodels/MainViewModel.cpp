#include <base/Translate.h>
#include <ui/viewmodels/MainViewModel.h>

namespace tulvane {

MainViewModel::MainViewModel(const UiContext& context, SettingsSelection& selection, QObject* parent)
    : QObject(parent),
      m_selection(selection),
      m_version(translate("Version ") + context.version)
{
}

QVariantList MainViewModel::entries()
{
    QVariantList list;
    for (const SettingsTab tab : allCases<SettingsTab>())
        list.append(QVariantMap{{QStringLiteral("page"), rawValue(tab)},
                                {QStringLiteral("title"), title(tab)},
                                {QStringLiteral("symbol"), symbol(tab)}});
    return list;
}

} // namespace tulvane
