#include "pds/blocklinereader.h"

#include <QIODevice>

#include <cstring>

namespace fx {

BlockLineReader::BlockLineReader(QIODevice &device, qsizetype blockSize)
    : m_device(device)
    , m_blockSize(qMax<qsizetype>(blockSize, 1))
{
    m_buffer.reserve(2 * m_blockSize);
}

bool BlockLineReader::Fill()
{
    // The carried-over tail moves to the front by hand: the buffer keeps its capacity, where
    // remove() followed by resize() would reallocate for every block.
    const qsizetype tail = m_buffer.size() - m_end;
    if (tail > 0 && m_end > 0)
        std::memmove(m_buffer.data(), m_buffer.constData() + m_end, size_t(tail));
    m_buffer.resize(tail);
    m_pos = 0;
    m_end = 0;
    while (!m_inputEnded) {
        const qsizetype old = m_buffer.size();
        m_buffer.resize(old + m_blockSize);
        const qint64 got = m_device.read(m_buffer.data() + old, m_blockSize);
        m_buffer.resize(old + qMax<qint64>(got, 0));
        if (got <= 0) {
            m_inputEnded = true;
            break;
        }
        // The last LF is a line's length from the end, so a backward walk finds it soon.
        for (qsizetype i = m_buffer.size() - 1; i >= old; --i) {
            if (m_buffer.at(i) == '\n') {
                m_end = i + 1;
                return true;
            }
        }
        // A line longer than a block: keep reading until it ends.
    }
    m_end = m_buffer.size();
    return m_end > 0;
}

bool BlockLineReader::ReadLine(QByteArrayView &line)
{
    if (m_pos == m_end && !Fill())
        return false;
    const char *start = m_buffer.constData() + m_pos;
    const void *lf = std::memchr(start, '\n', size_t(m_end - m_pos));
    const qsizetype length = lf ? static_cast<const char *>(lf) - start : m_end - m_pos;
    line = ChopCR(QByteArrayView(start, length));
    m_pos += lf ? length + 1 : length;
    return true;
}

bool BlockLineReader::ReadBlock(QByteArrayView &lines)
{
    if (m_pos == m_end && !Fill())
        return false;
    lines = QByteArrayView(m_buffer.constData() + m_pos, m_end - m_pos);
    m_pos = m_end;
    return true;
}

void BlockLineReader::Unread(qsizetype bytes)
{
    m_pos = qMax<qsizetype>(0, m_end - bytes);
}

} // namespace fx
