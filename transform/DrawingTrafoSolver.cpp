#include "transform/DrawingTrafoSolver.h"

#include "geometry/KoMatrix.h"
#include "geometry/KoTrafo3d.h"
#include "points/KoPointList.h"
#include "transform/ViraTrace.h"

#include <cmath>
#include <cstdarg>
#include <cwchar>
#include <vector>

namespace {

constexpr double kPi = 3.141592653589793;

// A preview line as long as its numbers need: a shift of 1e160 is written out in full with "%.3f", so no
// fixed buffer would do. The wide printf only says "too small" (-1), hence the growing buffer.
std::wstring format(const wchar_t* fmt, ...) {
  std::vector<wchar_t> buffer(256);
  constexpr std::size_t kLimit = std::size_t{1} << 20;  // far beyond any double written with %f
  for (;;) {
    va_list args;
    va_start(args, fmt);
    const int written = std::vswprintf(buffer.data(), buffer.size(), fmt, args);
    va_end(args);
    if (written >= 0) return std::wstring(buffer.data(), static_cast<std::size_t>(written));
    if (buffer.size() >= kLimit) return std::wstring();
    buffer.resize(buffer.size() * 4);
  }
}

KoMatrix identity() {
  KoMatrix m(4, 4);
  m.Identity();
  return m;
}

KoMatrix translation(double x, double y, double z) {
  KoMatrix m = identity();
  m(1, 4) = x;
  m(2, 4) = y;
  m(3, 4) = z;
  return m;
}

AcGeMatrix3d toHost(const KoMatrix& m) {
  AcGeMatrix3d result;
  for (int i = 0; i < 4; ++i)
    for (int j = 0; j < 4; ++j) result(i, j) = m(i + 1, j + 1);
  return result;
}

std::wstring shiftLine(const KoMatrix& m) {
  return format(L"Verschiebung um %.3f %.3f %.3f", m(1, 4), m(2, 4), m(3, 4));
}

void solveShift(const KoPoint& a, const KoPoint& t, DrawingTrafoSolution& s) {
  const KoMatrix m = translation(t.x - a.x, t.y - a.y, t.z - a.z);
  s.matrix = toHost(m);
  s.preview = shiftLine(m);
  s.okEnabled = true;
}

// Shift A1 onto T1, turn about the vertical through A1 by the change of direction A1->A2 to T1->T2, and
// scale about A1 by |T1T2| / |A1A2| only when the surveyor asks for it.
void solvePlanar(const KoPoint& a1, const KoPoint& a2, const KoPoint& t1, const KoPoint& t2, bool scale,
                 DrawingTrafoSolution& s) {
  ViraTrace("CalcTrafo 2");
  std::wstring text = L"2½D Transformation";
  const KoMatrix mt = translation(t1.x - a1.x, t1.y - a1.y, t1.z - a1.z);
  text += L"\n" + shiftLine(mt);

  // Coincident targets divide by zero here; the factor then shows as the formatter writes it.
  const double r = a1.Distance(a2) / t1.Distance(t2);
  const double theta = std::atan2(t2.y - t1.y, t2.x - t1.x) - std::atan2(a2.y - a1.y, a2.x - a1.x);

  const KoMatrix m1 = translation(-a1.x, -a1.y, -a1.z);
  const KoMatrix m1i = m1.Inverse();
  KoMatrix rz = identity();
  rz(1, 1) = std::cos(theta);
  rz(1, 2) = -std::sin(theta);
  rz(2, 1) = std::sin(theta);
  rz(2, 2) = std::cos(theta);
  const KoMatrix mr = m1i * rz * m1;
  text += format(L"\nDrehung in XY um %.2f°", theta * 180.0 / kPi);

  // No tolerance: a factor of exactly 1 is still reported and applied when the box is checked.
  const double factor = 1.0 / r;
  KoMatrix ms = identity();
  if (!scale) {
    text += format(L"\nKeine Skalierung. (Skalierungsfaktor wäre %f)", factor);
  } else {
    text += format(L"\nSkalierungsfaktor %f", factor);
    KoMatrix sm = identity();
    sm(1, 1) = factor;
    sm(2, 2) = factor;
    sm(3, 3) = factor;
    ms = m1i * sm * m1;
  }
  s.matrix = toHost(mt * mr * ms);
  s.preview = text;
  s.okEnabled = true;
}

KoMatrix spatialMatrix(const KoTrafo3d& trafo) {
  const KoVector& a = trafo.GetShiftA();
  const KoVector& b = trafo.GetShiftB();
  const KoMatrix rotation = trafo.GetRotation();
  KoMatrix r = identity();
  for (int i = 1; i <= 3; ++i)
    for (int j = 1; j <= 3; ++j) r(i, j) = rotation(i, j);
  return translation(b[1], b[2], b[3]) * r * translation(-a[1], -a[2], -a[3]);
}

void refuse(DrawingTrafoSolution& s) {
  s.preview = L"Berechnung der Transformation nicht möglich";
  s.okEnabled = false;
}

void solveSpatial(KoPointList& actual, KoPointList& target, bool scale, DrawingTrafoSolution& s) {
  ViraTrace("CalcTrafo 3");
  // A fourth pair in the middle between the first and the third steadies the estimate of three points.
  actual.AppendCopy(actual.At(0)->Mean(*actual.At(2)));
  target.AppendCopy(target.At(0)->Mean(*target.At(2)));
  actual.Renumber(1);
  target.Renumber(1);

  KoTrafo3d trafo;
  if (!trafo.Estimate(target, actual, 3, !scale)) {
    refuse(s);
    return;
  }
  KoMatrix m = spatialMatrix(trafo);
  std::wstring text = L"3D Transformation";
  if (!scale) {
    text += L"\nZeichnung nicht skalieren";
    // Overwrites the cosines of a rotation as well; the drawing relies on this exact diagonal.
    m(1, 1) = 1.0;
    m(2, 2) = 1.0;
    m(3, 3) = 1.0;
  } else {
    text += format(L"\nZeichnung Skalieren %f", trafo.GetScale());
    text += format(L"\nMittlere Fehler: x: %.3f y: %.3f z: %.3f", trafo.GetMeanErrorX(), trafo.GetMeanErrorY(),
                   trafo.GetMeanErrorZ());
  }
  s.matrix = toHost(m);
  s.preview = text;
  s.okEnabled = true;
}

// Four pairs come only from lists filled elsewhere; the estimate uses all four.
void solveFourPairs(KoPointList& actual, KoPointList& target, bool scale, DrawingTrafoSolution& s) {
  std::wstring text = L"3D Transformation";
  KoTrafo3d trafo;
  if (!trafo.Estimate(target, actual, 4, !scale)) {
    refuse(s);
    return;
  }
  text += scale ? format(L"\nSkalierungsfaktor %f", trafo.GetScale()) : std::wstring(L"\nKeine Skalierung");
  s.matrix = toHost(spatialMatrix(trafo));
  ViraTrace("3D Matrix");
  ViraTraceMatrix(s.matrix);
  s.preview = text;
  s.okEnabled = true;
}

}  // namespace

DrawingTrafoSolution SolveDrawingTrafo(KoPointList& actual, KoPointList& target, bool scale) {
  DrawingTrafoSolution s;
  actual.Renumber(1);
  target.Renumber(1);
  switch (actual.Count()) {
    case 0:
      s.preview = L"Es ist noch keine Transformation definiert";
      s.okEnabled = false;
      break;
    case 1:
      solveShift(*actual.At(0), *target.At(0), s);
      break;
    case 2:
      solvePlanar(*actual.At(0), *actual.At(1), *target.At(0), *target.At(1), scale, s);
      break;
    case 3:
      solveSpatial(actual, target, scale, s);
      break;
    case 4:
      solveFourPairs(actual, target, scale, s);
      break;
    default:
      ViraTrace("CalcTrafo Unknown");
      s.updatesDialog = false;
      return s;
  }
  s.preview = FormatMessageText(s.preview);
  return s;
}

std::wstring FormatMessageText(const std::wstring& text) {
  std::wstring out;
  out.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != L'%' || i + 1 == text.size()) {
      out += text[i];
      continue;
    }
    const wchar_t next = text[i + 1];
    if (next == L'0') return out;
    if (next == L'%' || next == L'.' || next == L'!' || next == L' ') {
      out += next;
      ++i;
    } else if (next == L'n') {
      out += L'\n';
      ++i;
    } else {
      out += text[i];
    }
  }
  return out;
}
