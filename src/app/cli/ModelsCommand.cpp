#include <app/cli/CommandSyntax.h>
#include <app/cli/ModelsCommand.h>
#include <app/cli/ModelsOutput.h>
#include <models/ModelManager.h>
#include <models/ModelVerification.h>

#include <QEventLoop>

#include <algorithm>
#include <array>
#include <optional>

namespace tulvane::cli {

namespace {

using Kind = ModelState::Kind;

void describe(CommandSyntax& syntax)
{
    syntax.addArgument(QStringLiteral("action"),
                       QStringLiteral("list, path, download, cancel, delete or verify"),
                       QStringLiteral("list|path|download|cancel|delete|verify"));
    syntax.addArgument(QStringLiteral("id"), QStringLiteral("a model's identifier, as listed"),
                       QStringLiteral("[ID]"));
    syntax.addArgument(QStringLiteral("file"), QStringLiteral("for verify: the file to check"),
                       QStringLiteral("[FILE]"));
    syntax.setOperandCount(1, 3);
    syntax.addFlag(QStringLiteral("json"), QStringLiteral("Print JSON."));
    syntax.setRemark(QStringLiteral("A download that is interrupted goes on where it ended the next time."));
}

/// Runs the event loop until the condition holds; it is asked again after each of the manager's changes.
template <class Condition>
void waitFor(const ModelManager& manager, const Condition& condition)
{
    QEventLoop loop;
    const auto ask = [&] {
        if (condition())
            loop.quit();
    };
    QObject::connect(&manager, &ModelManager::stateChanged, &loop, ask);
    QObject::connect(&manager, &ModelManager::attached, &loop, ask);
    if (!condition())
        loop.exec();
}

bool isUnderWay(const ModelState& state)
{
    return state.kind() == Kind::downloading || state.kind() == Kind::verifying;
}

class Models final {
public:
    Models(const ModelsContext& context, Console& console, bool json)
        : m_context(context),
          m_manager(context.manager),
          m_console(console),
          m_json(json)
    {
        waitFor(m_manager, [this] { return m_manager.isAttached(); });
    }

    [[nodiscard]] int list() const
    {
        if (m_json)
            m_console.out << modelsJson(m_manager, m_context.selectedModelID) << Qt::endl;
        else
            m_console.out << modelsTable(m_manager, m_context.selectedModelID) << Qt::flush;
        return ExitStatus::done;
    }

    [[nodiscard]] int path(const WhisperModel& model) const
    {
        if (m_json)
            return tell(model);
        m_console.out << m_manager.fileURL(model) << Qt::endl;
        return ExitStatus::done;
    }

    [[nodiscard]] int download(const WhisperModel& model) const
    {
        if (m_context.onInterrupt)
            m_context.onInterrupt([this, model] { m_manager.cancel(model); });
        m_manager.download(model);
        {
            const DownloadBar bar(m_console, m_manager, model, m_json);
            waitFor(m_manager, [&] { return !isUnderWay(m_manager.state(model.id)); });
        }
        const ModelState state = m_manager.state(model.id);
        if (state.kind() == Kind::failed)
            return fail(m_console, state.message());
        if (state.kind() != Kind::ready)
            return fail(m_console, QStringLiteral("The download was cancelled."));
        return path(model);
    }

    [[nodiscard]] int cancel(const WhisperModel& model) const
    {
        if (m_manager.state(model.id).kind() != Kind::downloading)
            return fail(m_console, QStringLiteral("“%1” is not being downloaded.").arg(model.id));
        m_manager.cancel(model);
        waitFor(m_manager, [&] { return m_manager.state(model.id).kind() != Kind::downloading; });
        return m_json ? tell(model) : ExitStatus::done;
    }

    [[nodiscard]] int remove(const WhisperModel& model) const
    {
        if (const auto removed = m_manager.deleteModel(model); !removed)
            return fail(m_console, removed.error().description());
        return m_json ? tell(model) : ExitStatus::done;
    }

    [[nodiscard]] int verify(const WhisperModel& model, const QString& file) const
    {
        const auto verified = verifyModelFile(file, model);
        if (m_json)
            m_console.out << verificationJson(model, file, verified) << Qt::endl;
        else if (verified)
            m_console.out << file << ": a sound file of " << model.id << Qt::endl;
        return verified ? ExitStatus::done : fail(m_console, verified.error().description());
    }

private:
    [[nodiscard]] int tell(const WhisperModel& model) const
    {
        m_console.out << modelJson(m_manager, model, m_context.selectedModelID) << Qt::endl;
        return ExitStatus::done;
    }

    const ModelsContext& m_context;
    ModelManager& m_manager;
    Console& m_console;
    bool m_json;
};

struct Action {
    const char* name;
    qsizetype operands; ///< after the action's own
};
constexpr std::array actions{Action{"list", 0},   Action{"path", 1},   Action{"download", 1},
                             Action{"cancel", 1}, Action{"delete", 1}, Action{"verify", 2}};

/// What is wrong with the words; none when they make sense.
std::optional<QString> problemWith(const QStringList& operands)
{
    const auto action = std::ranges::find_if(
        actions, [&](const Action& each) { return operands.constFirst() == QLatin1String(each.name); });
    if (action == actions.end())
        return QStringLiteral("there is no action “%1”.").arg(operands.constFirst());
    if (operands.size() - 1 > action->operands)
        return QStringLiteral("“%1” is one word too many.").arg(operands.at(action->operands + 1));
    if (operands.size() - 1 < action->operands)
        return operands.size() == 1 ? QStringLiteral("ID is missing.") : QStringLiteral("FILE is missing.");
    return std::nullopt;
}

int act(const Models& models, const QStringList& operands, const WhisperModel& model)
{
    const QString& action = operands.constFirst();
    if (action == u"path")
        return models.path(model);
    if (action == u"download")
        return models.download(model);
    if (action == u"cancel")
        return models.cancel(model);
    if (action == u"delete")
        return models.remove(model);
    return models.verify(model, operands.at(2));
}

} // namespace

int runModels(const QStringList& arguments, const ModelsContext& context, Console& console)
{
    CommandSyntax syntax(QStringLiteral("models"),
                         QStringLiteral("Shows, fetches and removes speech models."));
    describe(syntax);
    if (const auto status = syntax.parse(arguments, console))
        return *status;
    const QStringList operands = syntax.operands();
    if (const auto problem = problemWith(operands))
        return syntax.usageError(console, *problem);
    const QList<WhisperModel>& catalogue = context.manager.catalogue();
    const auto model = std::ranges::find(catalogue, operands.value(1), &WhisperModel::id);
    if (operands.size() > 1 && model == catalogue.end())
        return fail(console,
                    QStringLiteral("There is no model “%1”. (tulvane models list)").arg(operands.at(1)));
    const Models models(context, console, syntax.isSet(QStringLiteral("json")));
    return operands.size() == 1 ? models.list() : act(models, operands, *model);
}

} // namespace tulvane::cli
