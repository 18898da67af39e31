#include <ui/models/UiModels.h>

namespace tulvane {

UiModels::UiModels(const UiContext& context, SettingsSelection& selection)
    : m_context(context),
      m_selection(selection)
{
}

UiModels::~UiModels() = default;

MainModel* UiModels::main()
{
    return made(m_main, m_selection);
}

} // namespace tulvane
