#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <vector>

#include "support/KoCalcCRC32.h"
#include "support/KoDifftime.h"
#include "support/KoRound.h"

namespace {

// Bitwise CRC-32 with a chosen start value, independent of the table.
std::uint32_t ReferenceCrc(const unsigned char* data, std::size_t n, std::uint32_t start = 0xFFFFFFFFu)
{
    std::uint32_t crc = start;
    for (std::size_t i = 0; i < n; ++i) {
        crc ^= data[i];
        for (int k = 0; k < 8; ++k)
            crc = (crc >> 1) ^ (0xEDB88320u & (0u - (crc & 1u)));
    }
    return ~crc;
}

TEST(KoCalcCRC32, OneCallGivesTheStandardValueButTwoCallsDoNotConcatenate)
{
    const char* digits = "123456789";
    KoCalcCRC32 whole;
    EXPECT_EQ(whole.Update(digits, 9), 0xCBF43926u);

    KoCalcCRC32 split;
    const std::uint32_t first = split.Update(digits, 5);
    const std::uint32_t second = split.Update(digits + 5, 4);
    EXPECT_NE(second, 0xCBF43926u);
    // The second call starts from the inverted register, i.e. from the first result itself.
    EXPECT_EQ(second, ReferenceCrc(reinterpret_cast<const unsigned char*>(digits + 5), 4, first));

    // A null pointer resets, after which the standard value comes again.
    EXPECT_EQ(split.Update(nullptr, 123), 0u);
    EXPECT_EQ(split.Register(), 0u);
    EXPECT_EQ(split.Update(digits, 9), 0xCBF43926u);

    KoCalcCRC32 empty;
    EXPECT_EQ(empty.Update("", 0), 0u);
}

TEST(KoCalcCRC32, AgreesWithBitwiseReferenceOnRandomData)
{
    std::mt19937 rng(7);
    std::vector<unsigned char> data(4096);
    for (auto& b : data)
        b = static_cast<unsigned char>(rng());
    for (std::size_t n : {1u, 3u, 255u, 4096u}) {
        KoCalcCRC32 crc;
        EXPECT_EQ(crc.Update(data.data(), n), ReferenceCrc(data.data(), n)) << n;
    }
}

// A clock that hands out prepared times in order.
std::vector<KoSystemTime> g_times;
std::size_t g_next = 0;
KoSystemTime FakeClock() { return g_times.at(g_next++); }
KoSystemTime At(int day, int h, int m, int s, int ms)
{
    KoSystemTime t;
    t.year = 2026;
    t.month = 11;
    t.day = static_cast<std::uint16_t>(day);
    t.hour = static_cast<std::uint16_t>(h);
    t.minute = static_cast<std::uint16_t>(m);
    t.second = static_cast<std::uint16_t>(s);
    t.milliseconds = static_cast<std::uint16_t>(ms);
    return t;
}

TEST(KoDifftime, CountsTimeOfDayOnlySoMidnightGivesANegativeInterval)
{
    g_times = {At(21, 23, 59, 59, 0), At(22, 0, 0, 1, 0), At(22, 10, 0, 0, 0), At(22, 10, 0, 1, 250),
               At(22, 10, 0, 2, 0)};
    g_next = 0;
    KoDifftime meter(&FakeClock);
    EXPECT_TRUE(meter.IsRunning());
    EXPECT_DOUBLE_EQ(meter.ElapsedSeconds(), -86398.0);

    meter.Restart();
    EXPECT_DOUBLE_EQ(meter.ElapsedSeconds(), 1.25);
    meter.Stop();
    EXPECT_FALSE(meter.IsRunning());
    EXPECT_EQ(meter.EndTime().second, 2);
}

TEST(KoRoundToStep, HalvesAwayFromZeroOutwardAndFloor)
{
    EXPECT_EQ(KoRoundToStep(2.5, 1.0, 0), 3.0);
    EXPECT_EQ(KoRoundToStep(-2.5, 1.0, 0), -3.0);
    EXPECT_EQ(KoRoundToStep(2.4, 1.0, 0), 2.0);
    EXPECT_EQ(KoRoundToStep(7.3, 0.0, 0), 7.3);
    EXPECT_EQ(KoRoundToStep(1234.0, 5.0, 0), 1235.0);

    EXPECT_EQ(KoRoundToStep(2.0, 1.0, 1), 3.0);  // an exact multiple moves outward too
    EXPECT_EQ(KoRoundToStep(-2.0, 1.0, 5), -3.0);

    EXPECT_EQ(KoRoundToStep(2.9, 1.0, -1), 2.0);
    EXPECT_EQ(KoRoundToStep(-2.1, 1.0, -1), -3.0);  // floor, not toward zero
    EXPECT_NEAR(KoRoundToStep(0.37, 0.25, -1), 0.25, 1e-15);
}

}  // namespace
