#pragma once

#include <platform/linux/wayland/clipboard/DataControlProtocol.h>
#include <platform/linux/wayland/clipboard/PipeWriter.h>
#include <ports/PasteboardItem.h>

#include <QHash>
#include <QObject>

#include <functional>
#include <list>

namespace tulvane {

/// A selection of ours: answers every program that reads it. Of the thread of its connection.
class DataControlSource final {
public:
    struct Handlers {
        /// A program is about to get a text through this pipe: whether it is one whose reading counts. It
        /// waits.
        std::function<bool(int pipe)> counts;
        /// A reader that counts has got all of a text.
        std::function<void()> textRead;
        /// Another program has taken the selection over.
        std::function<void()> cancelled;
    };

    DataControlSource(zwlr_data_control_manager_v1* manager, const QList<PasteboardItem>& items,
                      Handlers handlers);
    DataControlSource(const DataControlSource&) = delete;
    DataControlSource& operator=(const DataControlSource&) = delete;
    ~DataControlSource();

    [[nodiscard]] zwlr_data_control_source_v1* object() const { return m_object; }
    [[nodiscard]] bool isCancelled() const { return m_isCancelled; }
    /// Whether readers are still being served.
    [[nodiscard]] bool isServing() const { return !m_writers.empty(); }

private:
    void offer(const PasteboardItem& item);
    void send(const QString& type, FileDescriptor pipe);
    void cancel();

    zwlr_data_control_source_v1* m_object;
    Handlers m_handlers;
    QHash<QString, QByteArray> m_bytesByType;
    std::list<PipeWriter> m_writers;
    bool m_isCancelled = false;
    QObject m_context; ///< what is called later is called while this lives
};

} // namespace tulvane
