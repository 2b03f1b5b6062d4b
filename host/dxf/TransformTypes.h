// The transformation of each entity family. Every function reads and checks all it needs, plans its changes
// into `edits` and returns Ok; on any other status it leaves `edits` as it found it or the caller drops them.
#pragma once

#include "host/dxf/Entity.h"
#include "host/dxf/Transform.h"
#include "host/dxf/TransformTags.h"

namespace dxf::xform {

struct Context {
  const Affine& m;
  const MatrixKind& kind;
  Edits& edits;
};

// World-coordinate curves and faces: POINT, LINE, RAY, XLINE, 3DFACE, SPLINE.
TransformStatus transformPoint(Entity& e, const Context& c);
TransformStatus transformLine(Entity& e, const Context& c);
TransformStatus transformRay(Entity& e, const Context& c);
TransformStatus transformFace(Entity& e, const Context& c);
TransformStatus transformSpline(Entity& e, const Context& c);

// Object-coordinate shapes: SOLID, TRACE, CIRCLE, ARC; and the ELLIPSE.
TransformStatus transformSolid(Entity& e, const Context& c);
TransformStatus transformCircle(Entity& e, const Context& c);
TransformStatus transformArc(Entity& e, const Context& c);
TransformStatus transformEllipse(Entity& e, const Context& c);

// LWPOLYLINE, and POLYLINE with its VERTEX children (2D, 3D, mesh and polyface).
TransformStatus transformLwPolyline(Entity& e, const Context& c);
TransformStatus transformPolyline(Entity& e, const Context& c);

// TEXT, ATTRIB, ATTDEF; MTEXT; INSERT with its ATTRIB children.
TransformStatus transformText(Entity& e, const Context& c);
TransformStatus transformMText(Entity& e, const Context& c);
TransformStatus transformInsert(Entity& e, const Context& c);

// HATCH; DIMENSION; LEADER.
TransformStatus transformHatch(Entity& e, const Context& c);
TransformStatus transformDimension(Entity& e, const Context& c);
TransformStatus transformLeader(Entity& e, const Context& c);

// Shared by TEXT and the attributes of a block reference: plans the text part of the tags [from, main end).
TransformStatus planText(TagList& tags, const Context& c);
// Shared by MTEXT and the multi-line text embedded in attributes, for the tags from `from` on.
TransformStatus planMText(TagList& tags, std::size_t from, const Context& c);

}  // namespace dxf::xform
