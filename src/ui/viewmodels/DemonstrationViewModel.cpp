#include <dictation/Demonstration.h>
#include <ui/viewmodels/DemonstrationViewModel.h>

namespace tulvane {

DemonstrationViewModel::DemonstrationViewModel(Demonstration& demonstration, QObject* parent)
    : QObject(parent),
      m_demonstration(demonstration)
{
    connect(&demonstration, &Demonstration::changed, this, &DemonstrationViewModel::changed);
}

bool DemonstrationViewModel::isRunning() const
{
    return m_demonstration.state() == Demonstration::State::running;
}

QString DemonstrationViewModel::text() const
{
    return m_demonstration.text();
}

QString DemonstrationViewModel::failure() const
{
    return m_demonstration.failure();
}

void DemonstrationViewModel::start()
{
    m_demonstration.start();
}

} // namespace tulvane
