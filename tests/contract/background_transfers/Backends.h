#pragma once

#include <ports/BackgroundTransfers.h>

#include <QList>

#include <memory>

namespace tulvane::test {

/// How a server behaves for one request.
struct Behaviour {
    int status = 200;
    qint64 cutAfter = -1; ///< the connection ends after so many bytes of the answer
    bool hold = false;    ///< ... or stays, and nothing more comes
};

/// One implementation of the port, with a server that it fetches from.
class TransfersBackend {
public:
    TransfersBackend() = default;
    TransfersBackend(const TransfersBackend&) = delete;
    TransfersBackend& operator=(const TransfersBackend&) = delete;
    virtual ~TransfersBackend() = default;

    [[nodiscard]] virtual BackgroundTransfers& transfers() = 0;
    /// Serves a file: the first requests as told, later ones well. Returns its address.
    [[nodiscard]] virtual QUrl serve(const QByteArray& body, const QList<Behaviour>& first) = 0;
};

[[nodiscard]] std::unique_ptr<TransfersBackend> makeFakeBackend();
[[nodiscard]] std::unique_ptr<TransfersBackend> makeInProcessBackend();
[[nodiscard]] std::unique_ptr<TransfersBackend> makeDetachedBackend();

} // namespace tulvane::test
