#pragma once

#include <platform/linux/atspi/TextField.h>

#include <QCoroTask>

#include <chrono>
#include <functional>

namespace tulvane {

/// Puts a text in the place of an element's selection, so that nothing is lost whatever goes wrong on the
/// way: the text goes in behind the selection, and the selection goes only once the text is seen to be there.
/// Main thread; it must live until its task is done.
class TextReplacement final {
public:
    /// Some programs carry out a request only after they have answered it. So long, and in such steps, is
    /// their text looked at again.
    static constexpr std::chrono::milliseconds settleStep{50};
    static constexpr int settleSteps = 5;

    /// Whether the element is still the one to be written into.
    using MayWrite = std::function<QCoro::Task<bool>()>;

    /// `mayWrite` is asked once, when all that the writing needs is known, and nothing else happens between
    /// its answer and the request to insert: the user may go elsewhere at any moment.
    TextReplacement(TextField field, QString text, MayWrite mayWrite)
        : m_field(std::move(field)),
          m_text(std::move(text)),
          m_mayWrite(std::move(mayWrite))
    {
    }

    /// False: the element has what it had before, and the selection too, as far as the program lets us.
    [[nodiscard]] QCoro::Task<bool> run();
    /// Whether the program has not answered, and nothing is seen of the text: it may come yet.
    [[nodiscard]] bool mayStillArrive() const { return m_mayStillArrive; }

private:
    QCoro::Task<std::optional<QString>> changedText(bool wasAccepted);
    QCoro::Task<bool> finish(TextChange change, QString after);
    QCoro::Task<bool> removeSelection(qsizetype length, QString after);
    QCoro::Task<bool> placeCaret(qsizetype length, QString written);
    QCoro::Task<bool> takeBack(qsizetype length, QString after);
    QCoro::Task<bool> putBackText();
    QCoro::Task<bool> putBackSelection();

    TextField m_field;
    QString m_text;
    MayWrite m_mayWrite;
    TextContent m_before;
    qsizetype m_start = 0; ///< of the selection, in the text as it was
    qsizetype m_end = 0;
    bool m_mayStillArrive = false;
};

} // namespace tulvane
