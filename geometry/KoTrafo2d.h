#pragma once

#include <cstdint>

class KoMatrix;
class KoTokenReader;

// One plane transformation of a chosen type with its parameters, e.g. from image or digitiser coordinates
// into a local survey system.
//
//   Helmert    X = p0 + p1*x - p3*y              Y = p2 + p3*x + p1*y       (p1 = m cos a, p3 = m sin a)
//   Affin      X = p0 + p1*x + p2*y              Y = p3 + p4*x + p5*y
//   Projektiv  X = (p0*x + p1*y + p2) / w        Y = (p3*x + p4*y + p5) / w,   w = p6*x + p7*y + 1
//   Polynomial X = p0 + p1 x + p2 y + p3 x^2 + p4 xy + p5 y^2 + p6 x^3 + p7 x^2y + p8 xy^2 + p9 y^3,
//              Y the same ten terms with p10 .. p19
//   Inv. Helmert has a name only; it transforms nothing.
class KoTrafo2d {
public:
    enum Type : int32_t {
        kNone = 0,
        kHelmert = 1,
        kAffin = 2,
        kProjektiv = 3,
        kPolynomial = 4,
        kInvHelmert = 5,
    };
    static constexpr int kParameterCount = 20;

    KoTrafo2d() = default;
    virtual ~KoTrafo2d() = default;

    // "None", "Helmert", ...; an index outside the table gives an empty text.
    static const char* TypeName(int32_t type);
    const char* TypeName() const { return TypeName(m_type); }

    int32_t GetType() const { return m_type; }
    void SetType(int32_t type) { m_type = type; }
    // p0 ... p19; another index throws std::out_of_range.
    double Parameter(int index) const { return m_p[Checked(index)]; }
    void SetParameter(int index, double value) { m_p[Checked(index)] = value; }
    const double* Parameters() const { return m_p; }

    // Transforms in place; false and the coordinates untouched for None, Inv. Helmert and unknown types.
    // The projective form has no guard against a vanishing denominator (the point lies on the horizon line).
    bool Apply(double& x, double& y) const;

    // Homogeneous 3x3 form of Helmert, Affin and Projektiv; the identity for every other type. `m` must be
    // 3x3 (code 13 otherwise).
    void ToMatrix(KoMatrix& m) const;
    KoMatrix ToMatrix() const;
    // Reads a Helmert transformation back from its homogeneous form; for any other type only the type is set.
    void FromMatrix(const KoMatrix& m, int32_t type = kHelmert);

    // Parameter files: an integer code, then that many numbers as the code's type needs, read into p0, p1, ...
    // A number may be an integer or a floating token; any other token counts as 0.0. Both return 1.
    //
    // Older files number the types 0 Projektiv, 1 Affin, 2 Helmert, 3 Polynomial; another code reads
    // nothing and leaves the transformation as it is.
    int ReadParametersLegacy(KoTokenReader& reader);
    // Newer files use the type index as code (1 Helmert ... 4 Polynomial). The code becomes the type
    // whatever it is; a code without parameters reads no numbers.
    int ReadParameters(KoTokenReader& reader);

    // Number of parameters a type uses: 4, 6, 8 or 20; 0 for the others.
    static int ParameterCount(int32_t type);

protected:
    static int Checked(int index);

    int32_t m_type = kNone;
    double m_p[kParameterCount] = {};
};
