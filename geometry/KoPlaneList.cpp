#include "geometry/KoPlaneList.h"

KoPlane* KoPlaneList::FindParallel(const KoPlane& plane) const
{
    for (KoPlane* p = First(); p; p = Next(p))
        if (p->IsParallel(plane))
            return p;
    return nullptr;
}
