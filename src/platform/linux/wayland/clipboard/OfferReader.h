#pragma once

#include <base/Scheduler.h>
#include <platform/linux/wayland/clipboard/DataControlOffer.h>
#include <platform/linux/wayland/clipboard/PipeReader.h>
#include <ports/PasteboardItem.h>

#include <chrono>
#include <functional>
#include <memory>

namespace tulvane {

/// Reads everything that another program offers, one type after the other in the order of their worth. Of the
/// thread of its connection; never waits. Dropping it ends it.
class OfferReader final {
public:
    /// A type of which nothing comes for this long is left out: the owner may have to make it first.
    static constexpr std::chrono::milliseconds formatLimit{3000};
    /// The same for the picture itself: a busy machine takes that long over one of 3840x2160.
    static constexpr std::chrono::milliseconds pictureLimit{8000};
    /// After so many types of which nothing came, one after the other, the owner is given up on.
    static constexpr int stallLimit = 2;
    /// And one that keeps us waiting for longer than this in all, however busily.
    static constexpr std::chrono::milliseconds totalLimit{12000};
    /// How much longer a read that is waited for goes on for the sake of further encodings of a picture that
    /// it has already.
    static constexpr std::chrono::milliseconds encodingsLimit{300};
    static constexpr qsizetype byteLimit = 256 * 1024 * 1024;

    /// Called once, from the event loop; the read may be dropped from within it.
    using Done = std::function<void(const PasteboardContents& contents)>;

    /// The first two outlive it.
    OfferReader(WaylandConnection& connection, Scheduler& scheduler, Done done);
    OfferReader(const OfferReader&) = delete;
    OfferReader& operator=(const OfferReader&) = delete;
    ~OfferReader() = default;

    /// Reads from here from now on; what has been read of another offer is of no use. Null where there is
    /// nothing.
    void begin(std::shared_ptr<DataControlOffer> offer);
    /// From now on the caller waits: what is of no further use is not waited for.
    void hurry();

private:
    void askNext();
    void ask(const QString& type);
    void progressed(qsizetype bytes);
    void ended(const QByteArray& bytes);
    void stalled();
    /// Whether all that is left is the same picture in other encodings.
    [[nodiscard]] bool isDispensable(const QString& type) const;
    void limitEncodings();
    void waitForMore();
    void later(std::function<void()> work);
    void finish(bool complete);

    WaylandConnection& m_connection;
    Scheduler& m_scheduler;
    Done m_done;
    std::shared_ptr<DataControlOffer> m_offer;
    QStringList m_left;
    QString m_type; ///< which is being read
    std::unique_ptr<PipeReader> m_pipe;
    PasteboardItem m_item;
    qsizetype m_bytes = 0;
    int m_stalls = 0; ///< in a row
    bool m_lost = false;
    bool m_isWaitedFor = false;
    std::unique_ptr<Scheduler::Token> m_stalled;
    std::unique_ptr<Scheduler::Token> m_late;
    std::unique_ptr<Scheduler::Token> m_encodingsEnd;
    std::unique_ptr<QObject> m_step = std::make_unique<QObject>(); ///< what is called later is of this step
};

} // namespace tulvane
