#include <base/ByteCount.h>
#include <base/Translate.h>
#include <models/ModelError.h>

namespace tulvane {

QString ModelError::description() const
{
    switch (m_kind) {
    case Kind::unexpectedSize:
        return translate("Downloaded %1, expected about %2. The download may be incomplete.")
            .arg(byteCountText(m_actual), byteCountText(m_expected));
    case Kind::httpStatus:
        return translate("The server responded with HTTP %1.").arg(m_actual);
    case Kind::notAGGMLFile:
        return translate(
            "The downloaded file is not a ggml model. The Hugging Face repo may not provide this "
            "file.");
    case Kind::checksumMismatch:
        return translate("The downloaded file failed its checksum. Please try again.");
    case Kind::fileSystem:
        return m_reason;
    }
    Q_UNREACHABLE();
}

} // namespace tulvane
