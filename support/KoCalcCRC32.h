#pragma once
// Running CRC-32 (the ISO-HDLC / zlib polynomial, reflected).
//
// One Update over a whole buffer, on a fresh or reset object, returns the standard CRC-32 of it.
// The object keeps the register without the final inversion, so a second Update starts from the
// inverted register: it does NOT give the CRC of the concatenated data. Checksums stored with the
// library's files were computed that way and must keep their values.

#include <cstddef>
#include <cstdint>

class KoCalcCRC32 {
public:
    KoCalcCRC32() = default;
    virtual ~KoCalcCRC32() = default;

    // A null data pointer resets the register to 0 and returns 0.
    std::uint32_t Update(const void* data, std::size_t length);
    std::uint32_t Register() const { return m_register; }

private:
    std::uint32_t m_register = 0;
};
