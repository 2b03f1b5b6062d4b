#include "geometry/KoMatrix.h"

#include "points/KoPoint.h"
#include "points/KoPointList.h"

bool KoMatrix::TransformPoint(KoPoint& point) const
{
  if (m_rows >= 4 && m_columns >= 4) return TransformPoint(point.x, point.y, point.z);
  return TransformPoint(point.x, point.y);
}

int KoMatrix::TransformPoints(KoPointList* list) const
{
  if (!list) return 0;
  int visited = 0;
  for (KoPoint* point = list->First(); point; point = KoPointList::Next(point)) {
    TransformPoint(*point);
    ++visited;
  }
  return visited;
}
