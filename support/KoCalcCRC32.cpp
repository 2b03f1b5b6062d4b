#include "support/KoCalcCRC32.h"

#include <array>

namespace {

constexpr std::array<std::uint32_t, 256> MakeTable()
{
    std::array<std::uint32_t, 256> table{};
    for (std::uint32_t i = 0; i < 256; ++i) {
        std::uint32_t c = i;
        for (int k = 0; k < 8; ++k)
            c = (c & 1) ? 0xEDB88320u ^ (c >> 1) : c >> 1;
        table[i] = c;
    }
    return table;
}

constexpr std::array<std::uint32_t, 256> kTable = MakeTable();

}  // namespace

std::uint32_t KoCalcCRC32::Update(const void* data, std::size_t length)
{
    if (!data) {
        m_register = 0;
        return 0;
    }
    std::uint32_t crc = ~m_register;
    const auto* bytes = static_cast<const unsigned char*>(data);
    for (std::size_t i = 0; i < length; ++i)
        crc = kTable[(crc ^ bytes[i]) & 0xFF] ^ (crc >> 8);
    m_register = crc;
    return ~crc;
}
