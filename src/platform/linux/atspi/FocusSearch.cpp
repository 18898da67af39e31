#include <base/Log.h>
#include <platform/linux/atspi/FocusSearch.h>

namespace tulvane {

using State = AccessibleStates::State;

namespace {

bool isError(const QDBusMessage& answer)
{
    return answer.type() == QDBusMessage::ErrorMessage;
}

} // namespace

/// What a row of objects says of itself.
struct FocusSearch::Level {
    Accessibles focused;
    bool hasEditable = false; ///< then only those of the focused that can be edited are named
    Accessibles open;         ///< on the screen, with children that can be asked for

    void add(const Accessible& object, bool isEditable)
    {
        if (isEditable && !hasEditable)
            focused.clear();
        if (isEditable || !hasEditable)
            focused.append(object);
        hasEditable = hasEditable || isEditable;
    }
};

AccessibilityBus::Limit FocusSearch::remaining() const
{
    return std::chrono::milliseconds(m_deadline.remainingTime());
}

QCoro::Task<std::optional<FocusedAccessible>> FocusSearch::run()
{
    const Accessible registry{QStringLiteral("org.a11y.atspi.Registry"), accessibleRootPath};
    const auto programs = co_await children(registry);
    if (!programs)
        co_return std::nullopt;
    const auto candidates = co_await inFront(*programs);
    std::vector<QCoro::Task<std::optional<QList<FocusedAccessible>>>> searches;
    for (const Accessible& program : candidates)
        searches.push_back(focusedIn(program));
    QList<FocusedAccessible> found;
    bool isSure = true;
    // Each is waited for, also when the answer is known already: they run on this object.
    for (auto& search : searches) {
        const auto claims = co_await search;
        if (claims)
            found += *claims;
        else
            isSure = false;
    }
    if (!isSure || found.size() > 1) {
        qCInfo(lcInsertion, "Accessibility: %s",
               isSure ? "several elements claim the focus"
                      : "a program did not say whether it has the focus");
        co_return std::nullopt;
    }
    co_return found.isEmpty() ? std::nullopt : std::optional(found.constFirst());
}

QCoro::Task<FocusSearch::Accessibles> FocusSearch::inFront(Accessibles programs)
{
    if (!m_bus->front())
        co_return programs;
    const auto front = m_bus->front()();
    std::vector<Awaited<QDBusMessage>> questions;
    for (const Accessible& program : programs)
        questions.push_back(m_bus->processOf(program, remaining()));
    Accessibles candidates;
    for (std::size_t index = 0; index < questions.size(); ++index) {
        const auto process = co_await questions[index];
        if (front && busAnswer::toUnsigned(process) == front)
            candidates.append(programs.at(static_cast<qsizetype>(index)));
    }
    co_return candidates;
}

QCoro::Task<std::optional<QList<FocusedAccessible>>> FocusSearch::focusedIn(Accessible program)
{
    const auto windows = co_await children(program);
    if (!windows)
        co_return std::nullopt;
    const auto states = co_await statesOf(*windows);
    if (!states)
        co_return std::nullopt;
    QList<FocusedAccessible> found;
    for (qsizetype index = 0; index < windows->size(); ++index) {
        if (!states->at(static_cast<std::size_t>(index)).has(State::active))
            continue;
        const auto inWindow = co_await focusedBelow(windows->at(index));
        if (!inWindow)
            co_return std::nullopt;
        found += *inWindow;
    }
    co_return found;
}

QCoro::Task<std::optional<QList<FocusedAccessible>>> FocusSearch::focusedBelow(Accessible window)
{
    QList<FocusedAccessible> found;
    bool isEditable = false;
    Accessibles parents{window};
    for (int depth = 0; !parents.isEmpty(); ++depth) {
        if (depth == mostLevels)
            co_return std::nullopt;
        const auto objects = co_await childrenOf(parents);
        if (!objects)
            co_return std::nullopt;
        const auto level = co_await look(*objects);
        if (!level)
            co_return std::nullopt;
        parents = level->open;
        if (level->focused.isEmpty())
            continue;
        // A field made of parts may say that both the whole and a part have the focus: the innermost that can
        // be edited counts, and where none can, the innermost.
        if (level->hasEditable || !isEditable) {
            found.clear();
            for (const Accessible& element : level->focused)
                found.append({element, window});
        }
        isEditable = isEditable || level->hasEditable;
        parents.removeIf([&](const Accessible& open) { return !level->focused.contains(open); });
    }
    co_return found;
}

QCoro::Task<std::optional<FocusSearch::Level>> FocusSearch::look(Accessibles objects)
{
    std::vector<Awaited<QDBusMessage>> counts;
    for (const Accessible& object : objects)
        counts.push_back(m_bus->property(object, accessibleInterfaces::accessible,
                                         QStringLiteral("ChildCount"), remaining()));
    const auto states = co_await statesOf(objects);
    Level level;
    bool isSure = states.has_value();
    for (std::size_t index = 0; index < counts.size(); ++index) {
        const auto answer = co_await counts[index];
        isSure = isSure && answer;
        if (!isSure)
            continue;
        const Accessible& object = objects.at(static_cast<qsizetype>(index));
        const AccessibleStates state = states->at(index);
        const int children = busAnswer::toIntProperty(answer).value_or(0);
        if (state.has(State::focused))
            level.add(object, state.has(State::editable));
        if (state.has(State::showing) && !state.has(State::managesDescendants) && children > 0 &&
            children <= mostChildren)
            level.open.append(object);
    }
    co_return isSure ? std::optional(level) : std::nullopt;
}

QCoro::Task<std::optional<FocusSearch::Accessibles>> FocusSearch::children(Accessible parent)
{
    auto asked =
        m_bus->call(parent, accessibleInterfaces::accessible, QStringLiteral("GetChildren"), {}, remaining());
    const auto answer = co_await asked;
    if (answer && isError(*answer))
        co_return Accessibles();
    co_return busAnswer::toAccessibles(answer);
}

QCoro::Task<std::optional<FocusSearch::Accessibles>> FocusSearch::childrenOf(Accessibles parents)
{
    std::vector<QCoro::Task<std::optional<Accessibles>>> questions;
    for (const Accessible& parent : parents)
        questions.push_back(children(parent));
    Accessibles all;
    bool isSure = true;
    for (auto& question : questions) {
        const auto some = co_await question;
        isSure = isSure && some;
        if (some)
            all += *some;
    }
    m_objects += static_cast<int>(all.size());
    co_return isSure&& m_objects <= mostObjects ? std::optional(all) : std::nullopt;
}

QCoro::Task<std::optional<std::vector<AccessibleStates>>> FocusSearch::statesOf(Accessibles objects)
{
    std::vector<Awaited<QDBusMessage>> questions;
    for (const Accessible& object : objects)
        questions.push_back(m_bus->call(object, accessibleInterfaces::accessible, QStringLiteral("GetState"),
                                        {}, remaining()));
    std::vector<AccessibleStates> all;
    bool isSure = true;
    for (auto& question : questions) {
        const auto answer = co_await question;
        isSure = isSure && answer;
        all.push_back(busAnswer::toStates(answer).value_or(AccessibleStates()));
    }
    co_return isSure ? std::optional(all) : std::nullopt;
}

} // namespace tulvane
