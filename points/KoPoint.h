#pragma once
// The point record: every measured or picked point of the system.

#include <cstdint>

#include "points/KoListnode.h"

class KoPoint : public KoListnode, public KoFlag {
public:
    // Bits of the coordinate component set kept in `code`.
    enum : std::uint16_t { kCodeX = 1, kCodeY = 2, kCodeZ = 4 };

    KoPoint() = default;
    KoPoint(std::uint32_t number, double x, double y, double z, std::uint16_t code);
    // Copies every field except mark2, which stays 0: mark2 belongs to the one point object that
    // carries it (for example a selection made on that very record) and never travels with a copy.
    KoPoint(const KoPoint& other);
    // Same rule as the copy: mark2 of this point is left as it is; list links are untouched.
    KoPoint& operator=(const KoPoint& other);

    // (a.photo - b.photo) + (a.number - b.number) in 32-bit arithmetic. The sum of both differences,
    // not photo first and number second, is the ordering the stored lists were built with.
    int Compare(const KoPoint& other) const;
    int Compare(const KoBaseListnode& other) const override;

    // True for the given number; a non-zero photo must match as well, photo 0 matches any photo.
    bool Matches(std::uint32_t number, std::int32_t photo) const;

    // Code from an integer: its decimal digits '1', '2', '3' select X, Y, Z (13 gives X and Z).
    void SetCode(int digits);
    // Code from a text: '1'/'X'/'x', '2'/'Y'/'y', '3'/'Z'/'z' select the components.
    void SetCode(const char* text);
    // Three-character text of the code: "  0", "  1", "  2", " 12", "  3", " 13", " 23", "123".
    const char* CodeText() const;
    static const char* CodeText(std::uint16_t code);

    // Each result starts as a copy of the left operand (so its mark2 is 0).
    KoPoint operator+(const KoPoint& other) const;  // X, Y, Z and dx, dy, dz added
    KoPoint operator-(const KoPoint& other) const;  // the same six subtracted
    KoPoint Mean(const KoPoint& other) const;       // the six components averaged
    KoPoint operator*(double factor) const;         // X, Y, Z scaled, deltas untouched
    KoPoint operator/(double factor) const;         // X, Y, Z divided, deltas untouched
    double SquaredDistance(const KoPoint& other) const;
    double Distance(const KoPoint& other) const;

    std::int32_t photo = 0;
    std::int32_t camera = 0;
    std::uint16_t code = 0;   // set of coordinate components, kCodeX | kCodeY | kCodeZ
    std::int32_t extra = 0;   // carried and copied, never written in the table form
    double x = 0.0, y = 0.0, z = 0.0;
    double dx = 0.0, dy = 0.0, dz = 0.0;          // also the standard deviations Sx, Sy, Sz
    double redu = 0.0, redu2 = 0.0, redu3 = 0.0;  // also the residuals x, y, z
    std::uint16_t mark = 0;
    std::uint16_t mark2 = 0;  // never copied
    std::int32_t color = 0;
};
