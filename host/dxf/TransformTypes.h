// The transformation of each entity family. Every function reads and checks all it needs, plans its changes
// into `edits` and returns Ok; on any other status it leaves `edits` as it found it or the caller drops them.
#pragma once

#include "host/dxf/Entity.h"
#include "host/dxf/Transform.h"
#include "host/dxf/TransformTags.h"

#include <string_view>

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

// The data every dimension type shares, in the tags before `to` (kNone: all of them).
TransformStatus planDimension(TagList& tags, std::size_t to, const Context& c);

// Shared by TEXT and the attributes of a block reference: plans the text part of the tags [from, main end).
TransformStatus planText(TagList& tags, const Context& c);
// Shared by MTEXT and the multi-line text embedded in attributes, for the tags from `from` on.
TransformStatus planMText(TagList& tags, std::size_t from, const Context& c);

// A multi-line text without direction and rotation runs along the world x axis as far as its plane allows:
// that axis projected into the plane, or the plane's own x axis when the plane stands across it.
Vec3 mtextDefaultDirection(const Vec3& extrusion);
// The embedded object of a multi-line text (its columns, extents, and copies of its position and direction)
// that starts with the 101 tag at `marker`.
TransformStatus planMTextEmbedded(TagList& tags, std::size_t marker, const Context& c);

// IMAGE and WIPEOUT; PDF, DWF and DGN underlays.
TransformStatus transformImage(Entity& e, const Context& c);
TransformStatus transformUnderlay(Entity& e, const Context& c);

// ARC_DIMENSION and LARGE_RADIAL_DIMENSION: the shared dimension data and their own points.
TransformStatus transformArcDimension(Entity& e, const Context& c);
TransformStatus transformLargeRadialDimension(Entity& e, const Context& c);

// TOLERANCE, SHAPE, LIGHT, OLE2FRAME.
TransformStatus transformTolerance(Entity& e, const Context& c);
TransformStatus transformShape(Entity& e, const Context& c);
TransformStatus transformLight(Entity& e, const Context& c);
TransformStatus transformOleFrame(Entity& e, const Context& c);

// MESH, HELIX, MLINE.
TransformStatus transformMesh(Entity& e, const Context& c);
TransformStatus transformHelix(Entity& e, const Context& c);
TransformStatus transformMLine(Entity& e, const Context& c);

// 3DSOLID, REGION, BODY and PLANESURFACE: a placement added to the ACIS data of each body.
TransformStatus transformAcis(Entity& e, const Context& c);

// ACAD_TABLE: placement and sizes; its block's drawing is scaled by the document.
TransformStatus transformTable(Entity& e, const Context& c);

// MULTILEADER with its context data.
TransformStatus transformMultiLeader(Entity& e, const Context& c);

// The index of the subclass marker (100) with this name, kNone when the entity has none.
std::size_t subclassMarker(const TagList& tags, std::string_view name);
// Whether the matrix turns the drawing over (a mirror).
inline bool mirrors(const Affine& m) {
  const Vec3 c0{m.l[0][0], m.l[1][0], m.l[2][0]}, c1{m.l[0][1], m.l[1][1], m.l[2][1]},
      c2{m.l[0][2], m.l[1][2], m.l[2][2]};
  return c0.dot(c1.cross(c2)) < 0.0;
}

}  // namespace dxf::xform
