#include "geometry/KoTrafo2d.h"

#include "geometry/KoMatrix.h"
#include "support/KoTokenReader.h"

#include <stdexcept>
#include <string>

namespace {

const char* const kTypeNames[] = {"None", "Helmert", "Affin", "Projektiv", "Polynomial", "Inv. Helmert"};

// The ten terms of the third-order polynomial, in parameter order.
double PolynomialSum(const double* p, double x, double y)
{
    const double xx = x * x;
    const double yy = y * y;
    return p[0] + p[1] * x + p[2] * y + p[3] * xx + p[4] * x * y + p[5] * yy + p[6] * xx * x + p[7] * xx * y +
           p[8] * x * yy + p[9] * yy * y;
}

}  // namespace

const char* KoTrafo2d::TypeName(int32_t type)
{
    if (type < 0 || type > kInvHelmert)
        return "";
    return kTypeNames[type];
}

bool KoTrafo2d::Apply(double& x, double& y) const
{
    const double* p = m_p;
    double tx = 0.0;
    double ty = 0.0;
    switch (m_type) {
    case kHelmert:
        tx = p[0] + p[1] * x - p[3] * y;
        ty = p[2] + p[3] * x + p[1] * y;
        break;
    case kAffin:
        tx = p[0] + p[1] * x + p[2] * y;
        ty = p[3] + p[4] * x + p[5] * y;
        break;
    case kProjektiv: {
        const double w = p[6] * x + p[7] * y + 1.0;
        tx = (p[0] * x + p[1] * y + p[2]) / w;
        ty = (p[3] * x + p[4] * y + p[5]) / w;
        break;
    }
    case kPolynomial:
        tx = PolynomialSum(p, x, y);
        ty = PolynomialSum(p + 10, x, y);
        break;
    default:
        return false;
    }
    x = tx;
    y = ty;
    return true;
}

int KoTrafo2d::Checked(int index)
{
    if (index < 0 || index >= kParameterCount)
        throw std::out_of_range("KoTrafo2d: parameter index " + std::to_string(index));
    return index;
}

int KoTrafo2d::ParameterCount(int32_t type)
{
    switch (type) {
    case kHelmert:
        return 4;
    case kAffin:
        return 6;
    case kProjektiv:
        return 8;
    case kPolynomial:
        return 20;
    default:
        return 0;
    }
}

void KoTrafo2d::ToMatrix(KoMatrix& m) const { m = ToMatrix(); }

KoMatrix KoTrafo2d::ToMatrix() const
{
    const double* p = m_p;
    KoMatrix m(3, 3);
    m.Identity();
    auto setRows = [&m](double a11, double a12, double a13, double a21, double a22, double a23) {
        m.SetElem(1, 1, a11);
        m.SetElem(1, 2, a12);
        m.SetElem(1, 3, a13);
        m.SetElem(2, 1, a21);
        m.SetElem(2, 2, a22);
        m.SetElem(2, 3, a23);
    };
    switch (m_type) {
    case kHelmert:
        setRows(p[1], -p[3], p[0], p[3], p[1], p[2]);
        break;
    case kAffin:
        setRows(p[1], p[2], p[0], p[4], p[5], p[3]);
        break;
    case kProjektiv:
        setRows(p[0], p[1], p[2], p[3], p[4], p[5]);
        m.SetElem(3, 1, p[6]);
        m.SetElem(3, 2, p[7]);
        break;
    default:
        break;
    }
    return m;
}

void KoTrafo2d::FromMatrix(const KoMatrix& m, int32_t type)
{
    m_type = type;
    if (type != kHelmert)
        return;
    m_p[1] = m.GetElem(1, 1);
    m_p[0] = m.GetElem(1, 3);
    m_p[3] = m.GetElem(2, 1);
    m_p[2] = m.GetElem(2, 3);
}

namespace {

void ReadNumbers(KoTokenReader& reader, double* p, int count)
{
    for (int i = 0; i < count; ++i)
        p[i] = reader.ReadNumber();
}

}  // namespace

int KoTrafo2d::ReadParametersLegacy(KoTokenReader& reader)
{
    static const int32_t typeOfCode[] = {kProjektiv, kAffin, kHelmert, kPolynomial};
    const long long code = reader.ReadInteger();
    if (code < 0 || code > 3)
        return 1;
    m_type = typeOfCode[code];
    ReadNumbers(reader, m_p, ParameterCount(m_type));
    return 1;
}

int KoTrafo2d::ReadParameters(KoTokenReader& reader)
{
    const long long code = reader.ReadInteger();
    m_type = static_cast<int32_t>(code);
    ReadNumbers(reader, m_p, ParameterCount(m_type));
    return 1;
}
