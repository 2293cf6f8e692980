#pragma once
// Whole lines of a file read a block at a time, so that files larger than memory can be read.

#include <QByteArray>
#include <QByteArrayView>

class QIODevice;

namespace fx {

/// Reads a device in blocks and hands out whole lines only: the part of a line cut by the end of
/// a block is carried over to the next block, as if the file had been sought back to the last
/// line end. LF and CR LF both end a line.
///
/// Invariant: m_buffer[m_pos, m_end) holds whole lines, each ended by LF (the last line of the
/// input may lack it); m_buffer[m_end, size) is the start of a line not yet complete.
class BlockLineReader
{
public:
    static constexpr qsizetype kDefaultBlockSize = qsizetype(1) << 20;

    explicit BlockLineReader(QIODevice &device, qsizetype blockSize = kDefaultBlockSize);

    /// The next line without its LF or CR LF; false at the end of the input.
    bool ReadLine(QByteArrayView &line);
    /// All whole lines left in the current block, with their line ends; false at the end.
    bool ReadBlock(QByteArrayView &lines);
    /// Gives back the last `bytes` of what the last ReadBlock handed out (whole lines), to be
    /// read again; only right after that ReadBlock.
    void Unread(qsizetype bytes);

private:
    bool Fill();

    QIODevice &m_device;
    qsizetype m_blockSize;
    QByteArray m_buffer;
    qsizetype m_pos = 0;
    qsizetype m_end = 0;
    bool m_inputEnded = false;
};

/// `line` without a trailing CR.
inline QByteArrayView ChopCR(QByteArrayView line)
{
    return line.endsWith('\r') ? line.chopped(1) : line;
}

} // namespace fx
