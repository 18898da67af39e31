#include <base/MessageFrame.h>

#include <QtEndian>

namespace tulvane {

QByteArray framed(const QByteArray& message)
{
    QByteArray frame(sizeof(quint32), Qt::Uninitialized);
    qToBigEndian(static_cast<quint32>(message.size()), frame.data());
    return frame + message;
}

std::optional<QByteArray> MessageFrames::next()
{
    constexpr qsizetype head = sizeof(quint32);
    if (m_isBroken || m_bytes.size() < head)
        return std::nullopt;
    const qint64 length = qFromBigEndian<quint32>(m_bytes.constData());
    m_isBroken = length > longest;
    if (m_isBroken || m_bytes.size() - head < length)
        return std::nullopt;
    const QByteArray message = m_bytes.mid(head, length);
    m_bytes.remove(0, head + length);
    return message;
}

} // namespace tulvane
