#include <platform/linux/front/RuledPasteTarget.h>
#include <platform/linux/wayland/clipboard/DataControlPasteboards.h>

#include <atomic>

namespace tulvane {

struct DataControlPasteboards::Parts {
    // The boards receive what the thread tells, which therefore ends first.
    std::atomic<bool> areThere = false;
    std::unique_ptr<DataControlPasteboard> clipboard;
    std::unique_ptr<DataControlPasteboard> primary;
    std::unique_ptr<BothSelections> both;
    std::unique_ptr<DataControlClipboard> thread;
};

DataControlPasteboards::DataControlPasteboards(std::shared_ptr<FrontPrograms> front, PasteRules rules)
    : m_front(std::move(front)),
      m_rules(std::move(rules)),
      m_parts(std::make_unique<Parts>())
{
}

DataControlPasteboards::~DataControlPasteboards() = default;

std::unique_ptr<DataControlPasteboards>
DataControlPasteboards::open(const QByteArray& socket, std::shared_ptr<FrontPrograms> front, PasteRules rules)
{
    std::unique_ptr<DataControlPasteboards> boards(
        new DataControlPasteboards(std::move(front), std::move(rules)));
    Parts* const parts = boards->m_parts.get();
    parts->thread = DataControlClipboard::start(socket, [parts](PasteSelection which) {
        const auto& board = which == PasteSelection::primary ? parts->primary : parts->clipboard;
        if (parts->areThere)
            board->tellActivity();
    });
    if (!parts->thread)
        return nullptr;
    const auto programOf = [boards = boards.get()](const PasteTarget& target) {
        return boards->programOf(target);
    };
    parts->clipboard =
        std::make_unique<DataControlPasteboard>(*parts->thread, PasteSelection::clipboard, programOf);
    parts->primary =
        std::make_unique<DataControlPasteboard>(*parts->thread, PasteSelection::primary, programOf);
    parts->both = std::make_unique<BothSelections>(*parts->clipboard, *parts->primary);
    parts->areThere = true;
    return boards;
}

PasteTarget DataControlPasteboards::pasteTarget()
{
    m_program = m_front->current();
    return ruledPasteTarget(m_program, m_rules);
}

FrontProgram DataControlPasteboards::programOf(const PasteTarget& target) const
{
    return target.window != 0 && target.window == m_program.window ? m_program : FrontProgram();
}

Pasteboard& DataControlPasteboards::of(PasteSelection selection)
{
    switch (selection) {
    case PasteSelection::clipboard:
        return *m_parts->clipboard;
    case PasteSelection::primary:
        return *m_parts->primary;
    case PasteSelection::both:
        return *m_parts->both;
    }
    Q_UNREACHABLE();
}

void DataControlPasteboards::readAhead()
{
    const PasteSelection selection = pasteTarget().selection;
    if (selection != PasteSelection::primary)
        m_parts->clipboard->readAhead();
    if (selection != PasteSelection::clipboard)
        m_parts->primary->readAhead();
}

void DataControlPasteboards::expectReader(const PasteTarget& target)
{
    if (target.selection != PasteSelection::primary)
        m_parts->clipboard->expectReader();
    if (target.selection != PasteSelection::clipboard)
        m_parts->primary->expectReader();
}

bool DataControlPasteboards::isInFront(const PasteTarget& target)
{
    return m_front->current().window == target.window;
}

} // namespace tulvane
