#include <speech/whisper/BlockReader.h>

#include <algorithm>

namespace tulvane {

qint64 BlockReader::read(char* output, qint64 count)
{
    qint64 done = 0;
    while (done < count) {
        const qint64 held = std::min(count - done, m_filled - m_next);
        std::copy_n(m_block.data() + m_next, held, output + done);
        m_next += held;
        done += held;
        if (done == count)
            break;
        const qint64 more = readPastBlock(output + done, count - done);
        if (more < 0)
            break;
        done += more;
    }
    return done;
}

/// Fills the block anew, or reads a long piece directly. Bytes read directly; negative where nothing more
/// came.
qint64 BlockReader::readPastBlock(char* output, qint64 count)
{
    m_start = position();
    m_next = 0;
    m_filled = 0;
    if (!m_file.seek(m_start))
        return -1;
    if (count < static_cast<qint64>(blockSize)) {
        m_filled = std::max(m_file.read(m_block.data(), qint64{blockSize}), qint64{0});
        return m_filled > 0 ? 0 : -1;
    }
    const qint64 direct = m_file.read(output, count);
    m_start += std::max(direct, qint64{0});
    return direct > 0 ? direct : -1;
}

bool BlockReader::seek(qint64 position)
{
    if (position >= m_start && position <= m_start + m_filled) {
        m_next = position - m_start;
        return true;
    }
    m_start = position;
    m_next = 0;
    m_filled = 0;
    return position <= m_size;
}

} // namespace tulvane
