#pragma once
// Table form of a point: one column per field identifier of a field mask. The mask ends at its
// first 0 or at its length. Neither writer ends the line; the caller does.
//
// Rows are written with 16 significant digits, which keeps survey coordinates to the 0.1 mm at
// seven-digit eastings but does not carry every bit of a double.

#include <ostream>
#include <span>

#include "points/KoPoint.h"
#include "points/eKoPointRWMask.h"
#include "support/KoTokenReader.h"

// Header texts, as the header writer puts them.
const char* KoPointFieldHeader(eKoPointRWMask field);

void KoWritePointHeader(std::ostream& out, std::span<const eKoPointRWMask> mask);
void KoWritePoint(std::ostream& out, const KoPoint& point, std::span<const eKoPointRWMask> mask);
// Reads one item per identifier into the point. False when the input ended or failed on the way.
bool KoReadPoint(KoTokenReader& reader, KoPoint& point, std::span<const eKoPointRWMask> mask);
