#pragma once
// The owning list of points with change notification and its table format.
// Its destructor releases the unit pairs, then the field mask, then the points (base order).

#include "points/KoPoint.h"
#include "points/TKoFormatTable.h"
#include "points/TKoListHeader.h"
#include "points/eKoPointRWMask.h"

class KoPointList : public TKoListHeader<KoPoint>, public TKoFormatTable<eKoPointRWMask> {
public:
    KoPointList() = default;
    KoPointList(const KoPointList& other) = default;
    KoPointList& operator=(const KoPointList& other) = default;
};
