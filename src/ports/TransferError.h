#pragma once

#include <base/ByteCount.h>
#include <base/Translate.h>

#include <QByteArray>
#include <QMetaType>
#include <QString>

#include <utility>

namespace tulvane {

/// Why a transfer ended without its file.
class TransferError final {
public:
    enum class Kind {
        cancelled,      ///< a caller asked for it; not a failure to show
        timedOut,       ///< no byte came for too long, or the whole took longer than is allowed
        hostNotFound,   ///< the server's (or the proxy's) name has no address
        cannotConnect,  ///< no server answers at the address
        connectionLost, ///< the response ended before its end
        insecure,       ///< no trusted encrypted connection could be made
        badAnswer,      ///< what came is not a usable part of the requested file
        noSpace,        ///< the disk is too full; the detail is how many bytes more it needs, in digits
        notWritten,     ///< the file could not be written; the detail is the system's reason
        alreadyRunning, ///< another program is fetching into the same place
        unavailable,    ///< the transfers themselves do not work here; the detail says why
    };

    TransferError() = default;
    explicit TransferError(Kind kind, QString detail = {}) : m_kind(kind), m_detail(std::move(detail)) {}

    [[nodiscard]] Kind kind() const { return m_kind; }
    [[nodiscard]] const QString& detail() const { return m_detail; }
    /// Where a later transfer may go on, for `BackgroundTransfers::resume`; empty when there is nothing to
    /// keep.
    [[nodiscard]] const QByteArray& resumeData() const { return m_resumeData; }
    [[nodiscard]] TransferError withResumeData(const QByteArray& data) const
    {
        TransferError copy = *this;
        copy.m_resumeData = data;
        return copy;
    }

    /// The text that the user reads.
    [[nodiscard]] QString description() const
    {
        switch (m_kind) {
        case Kind::cancelled:
            return translate("The download was cancelled.");
        case Kind::timedOut:
            return translate("The server stopped answering.");
        case Kind::hostNotFound:
            return translate("The server could not be found. Is this computer online?");
        case Kind::cannotConnect:
            return translate("The server could not be reached.");
        case Kind::connectionLost:
            return translate("The connection was lost.");
        case Kind::insecure:
            return translate("No secure connection to the server could be made.");
        case Kind::badAnswer:
            return translate("The server's answer is not a usable part of the file.");
        case Kind::noSpace:
            return translate("There is not enough free disk space: %1 more needed.")
                .arg(byteCountText(m_detail.toLongLong()));
        case Kind::notWritten:
            return translate("The download could not be written to disk: %1").arg(m_detail);
        case Kind::alreadyRunning:
            return translate("Another program is already downloading this file.");
        case Kind::unavailable:
            return translate("Downloads do not work here: %1").arg(m_detail);
        }
        Q_UNREACHABLE();
    }

    [[nodiscard]] friend bool operator==(const TransferError&, const TransferError&) = default;

private:
    Kind m_kind = Kind::cancelled;
    QString m_detail;
    QByteArray m_resumeData;
};

} // namespace tulvane

Q_DECLARE_METATYPE(tulvane::TransferError)
