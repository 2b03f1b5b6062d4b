// Reading numbers and points out of an entity's tags and planning the changes to them, so that an entity is
// only written once every value it needs has been read and found usable.
#pragma once

#include "host/dxf/TagList.h"
#include "host/dxf/TransformGeometry.h"

#include <array>
#include <bitset>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace dxf::xform {

inline constexpr std::size_t kNone = static_cast<std::size_t>(-1);

// Changes to one or more tag lists, carried out together by apply().
class Edits {
 public:
  void set(TagList& tags, std::size_t i, double value) { ops_.push_back({&tags, i, 0, -1, value, false, 0}); }
  // Puts a new tag in front of index `before`; tags inserted at the same place keep their planned order.
  void insert(TagList& tags, std::size_t before, int code, double value) {
    ops_.push_back({&tags, before, code, -1, value, true, static_cast<std::uint32_t>(ops_.size())});
    inserts_ = true;
  }
  // Writes the point whose x tag is at `x`; a point written without z (old files may leave it out) gets
  // its z tag when it leaves the XY plane.
  void setPoint(TagList& tags, std::size_t x, const Vec3& p, bool hasZ) {
    set(tags, x, p.x);
    set(tags, x + 1, p.y);
    if (hasZ)
      set(tags, x + 2, p.z);
    else if (p.z != 0.0)
      insert(tags, x + 2, tags.code(x) + 20, p.z);
  }
  // Writes x and y only: vertices of lightweight polylines and hatch boundaries carry no z of their own.
  void setPoint2d(TagList& tags, std::size_t x, const Vec3& p) {
    set(tags, x, p.x);
    set(tags, x + 1, p.y);
  }
  void insertPoint(TagList& tags, std::size_t before, int code, const Vec3& p) {
    insert(tags, before, code, p.x);
    insert(tags, before, code + 10, p.y);
    insert(tags, before, code + 20, p.z);
  }

  // Text values (the proprietary data of solids): replaced in place, or put in front of index `before`.
  void setText(TagList& tags, std::size_t i, std::string text) {
    texts_.push_back(std::move(text));
    ops_.push_back({&tags, i, 0, static_cast<std::int32_t>(texts_.size() - 1), 0.0, false, 0});
  }
  void insertText(TagList& tags, std::size_t before, int code, std::string text) {
    texts_.push_back(std::move(text));
    ops_.push_back({&tags, before, code, static_cast<std::int32_t>(texts_.size() - 1), 0.0, true,
                    static_cast<std::uint32_t>(ops_.size())});
    inserts_ = true;
  }

  void apply();
  // Whether every planned value is a finite number.
  bool finite() const {
    for (const Op& op : ops_)
      if (!std::isfinite(op.value)) return false;
    return true;
  }
  void clear() {
    ops_.clear();
    texts_.clear();
    inserts_ = false;
  }

 private:
  struct Op {
    TagList* tags;
    std::size_t index;
    int code;
    std::int32_t text;  // index into texts_, or -1 for a number
    double value;
    bool insert;
    std::uint32_t order;
  };
  std::vector<Op> ops_;
  std::vector<std::string> texts_;
  bool inserts_ = false;
};

// The first index of each group code below 300 in the main data of an entity: the tags before its embedded
// object (101) and its extended data (1001 and up).
class CodeIndex {
 public:
  static constexpr int kCodes = 300;
  explicit CodeIndex(const TagList& tags, std::size_t from = 0, std::size_t to = static_cast<std::size_t>(-1));
  std::size_t operator[](int code) const {
    return code >= 0 && code < kCodes && seen_.test(static_cast<std::size_t>(code))
               ? first_[static_cast<std::size_t>(code)]
               : kNone;
  }
  bool has(int code) const { return (*this)[code] != kNone; }
  std::size_t end() const { return end_; }  // one past the main data

 private:
  // Only the codes marked as seen hold an index: clearing 300 bits per entity is cheaper than 300 indices.
  std::bitset<kCodes> seen_;
  std::array<std::uint32_t, kCodes> first_;
  std::size_t end_ = 0;
};

bool readNumber(const TagList& tags, std::size_t i, double& out);

// Whether the point whose x tag sits at `x` has its z tag.
inline bool pointHasZ(const TagList& tags, std::size_t x) {
  return x + 2 < tags.size() && tags.code(x + 2) == tags.code(x) + 20;
}

// Reads the point whose x tag sits at `x`: the y tag must follow; a z tag after it is optional (zDefault).
bool readPoint(const TagList& tags, std::size_t x, Vec3& out, bool& hasZ, double zDefault = 0.0);

// Reads an optional value: `fallback` when the tag is absent (index kNone), false when it is not a number.
bool readOptional(const TagList& tags, std::size_t i, double fallback, double& out);
// Reads an optional direction such as the extrusion: `fallback` when absent.
bool readOptionalVector(const TagList& tags, std::size_t x, const Vec3& fallback, Vec3& out);

// The entity's extrusion (210), the world z axis when it has none; false when it is unreadable or zero.
bool readExtrusion(const TagList& tags, const CodeIndex& idx, Vec3& extrusion);

// Index one past the section (subclass, embedded object or end of main data) that holds tag `anchor`; new tags
// belonging to that section are inserted there.
std::size_t sectionEnd(const TagList& tags, std::size_t anchor);

// Index where the entity's extended data starts (tags.size() when there is none).
std::size_t xdataStart(const TagList& tags);

// Plans the transformation of world positions, displacements, directions, distances and scale factors that
// applications keep in the extended data.
bool planXdata(TagList& tags, const Affine& m, const MatrixKind& kind, Edits& edits);

// Plans the number at `i` times `factor`; kNone has nothing to plan. False when the number is unreadable.
bool planScaled(TagList& tags, std::size_t i, double factor, Edits& edits);
// Plans the world point whose x tag sits at `i` through the matrix; kNone has nothing to plan.
bool planWorldPoint(TagList& tags, std::size_t i, const Affine& m, Edits& edits);
// Plans every world point with group code `code` among the tags [from, to).
bool planWorldPoints(TagList& tags, std::size_t from, std::size_t to, int code, const Affine& m, Edits& edits);

// Writes the entity's new extrusion: into its 210 tags when it has them, else as new tags at `insertAt`
// when the plane is no longer the world XY plane.
void planExtrusion(TagList& tags, std::size_t extrusionIndex, std::size_t insertAt, const Vec3& extrusion,
                   Edits& edits);

}  // namespace dxf::xform
