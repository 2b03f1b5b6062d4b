// An entity of a drawing: something with geometry that lives in a block (model space, for this host's
// drawings) and sits on a layer.
#pragma once

#include "sdk/AcCmColor.h"
#include "sdk/AcChar.h"
#include "sdk/AcDbObject.h"
#include "sdk/AcGeMatrix3d.h"
#include "sdk/Adesk.h"

#include <vector>

// The path from a top-level entity down to one of its parts. The null path (no ids) means the whole entity.
class AcDbFullSubentPath {
 public:
  AcDbFullSubentPath() = default;
  explicit AcDbFullSubentPath(std::vector<AcDbObjectId> ids, int subentIndex = 0)
      : ids_(std::move(ids)), subentIndex_(subentIndex) {}

  bool isNull() const { return ids_.empty(); }
  const std::vector<AcDbObjectId>& objectIds() const { return ids_; }
  int subentIndex() const { return subentIndex_; }

 private:
  std::vector<AcDbObjectId> ids_;
  int subentIndex_ = 0;
};

inline const AcDbFullSubentPath kNullSubent{};

class ACDB_PORT AcDbEntity : public AcDbObject {
 public:
  ~AcDbEntity() override;

  // The layer's record id; null when the entity names a layer the drawing does not have.
  AcDbObjectId layerId() const;
  // A copy of the layer name; the caller frees it with delete[].
  ACHAR* layer() const;
  // eKeyNotFound when the drawing has no such layer; the entity keeps its layer then.
  Acad::ErrorStatus setLayer(const ACHAR* layerName, bool doSubents = true);
  Acad::ErrorStatus setLayer(AcDbObjectId layerId, bool doSubents = true);

  Adesk::UInt16 colorIndex() const;
  Acad::ErrorStatus setColorIndex(Adesk::UInt16 index, bool doSubents = true);

  // Moves, turns and scales the entity. A matrix that is not a similarity answers
  // eCannotScaleNonUniformly for entities whose shape cannot follow it, and the entity stays unchanged.
  virtual Acad::ErrorStatus transformBy(const AcGeMatrix3d& xform);

  // Shows the entity (the null path: all of it) highlighted in the drawing view, or normal again.
  Acad::ErrorStatus highlight(const AcDbFullSubentPath& subId = kNullSubent, bool highlightAll = false) const;
  Acad::ErrorStatus unhighlight(const AcDbFullSubentPath& subId = kNullSubent, bool highlightAll = false) const;
  // Redraws the entity in the drawing view now.
  Acad::ErrorStatus draw();

 // For the host: wraps an object it opens (entities of types without a class of their own).
  explicit AcDbEntity(AcDbImpObject* imp) : AcDbObject(imp) {}
};
