#pragma once

#include <platform/linux/wayland/clipboard/DataControlSelection.h>
#include <ports/PasteChord.h>

#include <QByteArray>
#include <QThread>

#include <functional>
#include <memory>

namespace tulvane {

/// Both selections of a compositor, in a thread and over a connection of their own, so that a program that
/// reads what we put there is answered whatever the main thread does. It must be: a text field of our own
/// windows reads the clipboard on the main thread, waits there for the answer, and would wait for itself.
///
/// Called from the main thread; each call waits for the clipboard's thread, which waits for the compositor
/// and for nobody else.
class DataControlClipboard final {
public:
    /// Called on the clipboard's thread.
    using Activity = std::function<void(PasteSelection)>;

    /// Null where nothing answers at the socket, or lets no program without a window at its selections.
    [[nodiscard]] static std::unique_ptr<DataControlClipboard> start(const QByteArray& socket,
                                                                     Activity activity);
    DataControlClipboard(const DataControlClipboard&) = delete;
    DataControlClipboard& operator=(const DataControlClipboard&) = delete;
    ~DataControlClipboard();

    /// Does this in the thread, and answers what it answers. `fallback` where there is no such selection.
    template <class Answer>
    [[nodiscard]] Answer ask(PasteSelection which, Answer fallback,
                             const std::function<Answer(DataControlSelection&)>& question)
    {
        Answer answer = std::move(fallback);
        inThread([&] {
            if (DataControlSelection* const selection = find(which))
                answer = question(*selection);
        });
        return answer;
    }
    /// The process of the compositor; 0 where the system does not tell.
    [[nodiscard]] quint32 compositor() const { return m_compositor; }

private:
    struct Parts;
    explicit DataControlClipboard(Activity activity);

    [[nodiscard]] bool open(const QByteArray& socket);
    [[nodiscard]] DataControlSelection* find(PasteSelection which);
    void inThread(const std::function<void()>& work);

    Activity m_activity;
    quint32 m_compositor = 0;
    QThread m_thread;
    QObject m_there;                ///< lives in the thread
    std::unique_ptr<Parts> m_parts; ///< made and destroyed in the thread
};

} // namespace tulvane
