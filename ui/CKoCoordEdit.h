// A one-line edit that shows a point as text and reads typed coordinates back into it. The transformation
// dialog uses it for picked drawing points (read-only) and for the target coordinates the surveyor types.
#pragma once

#include "points/KoPoint.h"
#include "sdk/ui/CEdit.h"

#include <string>

class CKoCoordEdit : public CEdit {
 public:
  // What the field shows and reads.
  enum : int { kModeXY = 0, kModeXYZ = 1, kModeDeltas = 2 };

  CKoCoordEdit() = default;

  // Takes the point, marks the field as holding a value and shows it in the current mode. The caret stays
  // where it was, so a refresh while the user types does not throw it back to the start.
  void Write(const KoPoint& point);
  // Starts from the reference point and replaces the coordinates (deltas in mode 2) that the text names.
  void Read();
  // Replaces the coordinates (deltas in mode 2) of `point` that the text names; nothing else changes.
  void Read(KoPoint& point) const;

  // The text Write shows for `point` in this field's mode, precision and unit; empty for an unknown mode.
  std::wstring Format(const KoPoint& point) const;

  const KoPoint& Point() const { return m_point; }
  KoPoint& Point() { return m_point; }
  const KoPoint& ReferencePoint() const { return m_referencePoint; }
  void SetReferencePoint(const KoPoint& point) { m_referencePoint = point; }
  bool HoldsValue() const { return m_holdsValue; }

  int Precision() const { return m_precision; }
  void SetPrecision(int decimals) { m_precision = decimals; }
  const std::wstring& UnitText() const { return m_unitText; }
  void SetUnitText(const std::wstring& unit) { m_unitText = unit; }
  // The bracketed name of a length unit by its stored index ("[mm]"; "??" for an unknown index).
  void SetUnit(int unitIndex);
  int Mode() const { return m_mode; }
  void SetMode(int mode) { m_mode = mode; }

 private:
  int m_precision = 4;
  std::wstring m_unitText;
  KoPoint m_point;
  KoPoint m_referencePoint;
  bool m_holdsValue = false;
  int m_mode = kModeXYZ;
};
