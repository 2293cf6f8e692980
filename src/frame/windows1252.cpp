#include "frame/windows1252.h"

namespace fx {

namespace {
// Bytes 0x80 to 0x9F; the rest of the code page is Latin-1. Undefined bytes map to themselves.
constexpr char16_t kHigh[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, //
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F, //
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014, //
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178, //
};

char EncodeOne(char16_t c)
{
    if (c < 0x80 || (c >= 0xA0 && c <= 0xFF))
        return static_cast<char>(c);
    for (int i = 0; i < 32; ++i)
        if (kHigh[i] == c)
            return static_cast<char>(0x80 + i);
    return '?';
}
} // namespace

QString FromWindows1252(const QByteArray &bytes)
{
    QString text(bytes.size(), Qt::Uninitialized);
    QChar *out = text.data();
    for (const char byte : bytes) {
        const auto b = static_cast<unsigned char>(byte);
        *out++ = QChar(b >= 0x80 && b < 0xA0 ? kHigh[b - 0x80] : char16_t(b));
    }
    return text;
}

QByteArray ToWindows1252(const QString &text)
{
    QByteArray bytes(text.size(), Qt::Uninitialized);
    char *out = bytes.data();
    for (const QChar c : text)
        *out++ = EncodeOne(c.unicode());
    return bytes;
}

} // namespace fx
