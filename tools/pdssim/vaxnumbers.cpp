#include "pdssim/vaxnumbers.h"

#include <bit>
#include <cmath>
#include <cstdint>

namespace pdssim {

namespace {
// D-float: sign, 8-bit exponent of bias 128, 55-bit fraction 0.1fff; IEEE: 11-bit exponent
// of bias 1023, 52-bit fraction 1.fff. Hence the exponent shift of 1023 - 129.
constexpr int kExponentShift = 1023 - 129;
constexpr std::uint64_t kLargestD = 0x7fffffffffffffffULL;

std::uint8_t Byte(const QByteArray &bytes, qsizetype at)
{
    return std::uint8_t(bytes.at(at));
}
} // namespace

void PutVaxInt32(QByteArray &bytes, qsizetype at, qint32 value)
{
    const auto u = std::uint32_t(value);
    bytes[at] = char(u >> 16);
    bytes[at + 1] = char(u >> 24);
    bytes[at + 2] = char(u);
    bytes[at + 3] = char(u >> 8);
}

qint32 GetVaxInt32(const QByteArray &bytes, qsizetype at)
{
    const std::uint32_t u = std::uint32_t(Byte(bytes, at)) << 16 | std::uint32_t(Byte(bytes, at + 1)) << 24
                            | std::uint32_t(Byte(bytes, at + 2)) | std::uint32_t(Byte(bytes, at + 3)) << 8;
    return qint32(u);
}

void PutVaxDouble(QByteArray &bytes, qsizetype at, double value)
{
    const auto ieee = std::bit_cast<std::uint64_t>(value);
    const std::uint64_t sign = ieee & 0x8000000000000000ULL;
    const int exponent = int((ieee >> 52) & 0x7ff) - kExponentShift;
    std::uint64_t d = 0;
    if (value == 0.0 || exponent < 1)
        d = 0;
    else if (exponent > 255 || !std::isfinite(value))
        d = sign | kLargestD;
    else
        d = sign | std::uint64_t(exponent) << 55 | (ieee & 0x000fffffffffffffULL) << 3;
    for (int word = 0; word < 4; ++word) {
        const auto w = std::uint16_t(d >> (48 - 16 * word));
        bytes[at + 2 * word] = char(w & 0xff);
        bytes[at + 2 * word + 1] = char(w >> 8);
    }
}

double GetVaxDouble(const QByteArray &bytes, qsizetype at)
{
    std::uint64_t d = 0;
    for (int word = 0; word < 4; ++word)
        d = d << 16 | std::uint64_t(Byte(bytes, at + 2 * word)) | std::uint64_t(Byte(bytes, at + 2 * word + 1)) << 8;
    const int exponent = int((d >> 55) & 0xff);
    if (exponent == 0)
        return 0.0;
    const std::uint64_t ieee = (d & 0x8000000000000000ULL) | std::uint64_t(exponent + kExponentShift) << 52
                               | ((d >> 3) & 0x000fffffffffffffULL);
    return std::bit_cast<double>(ieee);
}

} // namespace pdssim
