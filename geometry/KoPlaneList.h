#pragma once

#include "geometry/KoPlane.h"
#include "points/TKoListHeader.h"

// Owning list of named planes, e.g. the faces of a building model.
class KoPlaneList : public TKoListHeader<KoPlane> {
public:
    // The first plane parallel to the given one (within the parallel tolerance), or null.
    KoPlane* FindParallel(const KoPlane& plane) const;
};
