#include "host/dxf/TransformTags.h"
#include "host/dxf/TransformTypes.h"

#include <algorithm>

namespace dxf::xform {

void Edits::apply() {
  for (const Op& op : ops_) {
    if (op.insert) continue;
    if (op.text < 0)
      op.tags->setNumber(op.index, op.value);
    else
      op.tags->setText(op.index, std::move(texts_[static_cast<std::size_t>(op.text)]));
  }
  if (!inserts_) {
    ops_.clear();
    texts_.clear();
    return;
  }
  // Inserting from the back keeps the planned indices of the remaining inserts valid.
  auto firstInsert = std::stable_partition(ops_.begin(), ops_.end(), [](const Op& op) { return !op.insert; });
  std::sort(firstInsert, ops_.end(), [](const Op& a, const Op& b) {
    if (a.tags != b.tags) return a.tags < b.tags;
    if (a.index != b.index) return a.index > b.index;
    return a.order > b.order;
  });
  for (auto it = firstInsert; it != ops_.end(); ++it) {
    if (it->text < 0)
      it->tags->insertNumber(it->index, it->code, it->value);
    else
      it->tags->insert(it->index, it->code, std::move(texts_[static_cast<std::size_t>(it->text)]));
  }
  clear();
}

CodeIndex::CodeIndex(const TagList& tags, std::size_t from, std::size_t to) {
  std::size_t i = from;
  const std::size_t last = std::min(to, tags.size());
  for (; i < last; ++i) {
    const int c = tags.code(i);
    if (c == 101 || c >= 1000) break;
    if (c < 0 || c >= kCodes) continue;
    const auto slot = static_cast<std::size_t>(c);
    if (!seen_.test(slot)) {
      seen_.set(slot);
      first_[slot] = static_cast<std::uint32_t>(i);
    }
  }
  end_ = i;
}

bool readNumber(const TagList& tags, std::size_t i, double& out) {
  if (i >= tags.size()) return false;
  const std::optional<double> v = tags.number(i);
  if (!v || !std::isfinite(*v)) return false;
  out = *v;
  return true;
}

bool readPoint(const TagList& tags, std::size_t x, Vec3& out, bool& hasZ, double zDefault) {
  if (x + 1 >= tags.size()) return false;
  const int code = tags.code(x);
  if (tags.code(x + 1) != code + 10) return false;
  if (!readNumber(tags, x, out.x) || !readNumber(tags, x + 1, out.y)) return false;
  hasZ = x + 2 < tags.size() && tags.code(x + 2) == code + 20;
  if (!hasZ) {
    out.z = zDefault;
    return true;
  }
  return readNumber(tags, x + 2, out.z);
}

bool readOptional(const TagList& tags, std::size_t i, double fallback, double& out) {
  if (i == kNone) {
    out = fallback;
    return true;
  }
  return readNumber(tags, i, out);
}

bool readOptionalVector(const TagList& tags, std::size_t x, const Vec3& fallback, Vec3& out) {
  if (x == kNone) {
    out = fallback;
    return true;
  }
  bool hasZ = false;
  return readPoint(tags, x, out, hasZ, 0.0);
}

bool readExtrusion(const TagList& tags, const CodeIndex& idx, Vec3& extrusion) {
  return readOptionalVector(tags, idx[210], kWorldZ, extrusion) && extrusion.lengthSquared() > 0.0;
}

std::size_t sectionEnd(const TagList& tags, std::size_t anchor) {
  std::size_t i = anchor + 1;
  while (i < tags.size()) {
    const int c = tags.code(i);
    if (c == 100 || c == 101 || c >= 1000) break;
    ++i;
  }
  return i;
}

std::size_t xdataStart(const TagList& tags) {
  std::size_t i = tags.size();
  while (i > 0 && tags.code(i - 1) >= 1000) --i;
  // A string tag 1000 cannot open the extended data; the application name 1001 does.
  while (i < tags.size() && tags.code(i) != 1001) ++i;
  return i;
}

bool planXdata(TagList& tags, const Affine& m, const MatrixKind& kind, Edits& edits) {
  for (std::size_t i = xdataStart(tags); i < tags.size(); ++i) {
    const int c = tags.code(i);
    if (c >= 1011 && c <= 1013) {
      Vec3 v;
      bool hasZ = false;
      if (!readPoint(tags, i, v, hasZ)) return false;
      Vec3 r;
      if (c == 1011) {
        r = m.point(v);
      } else if (c == 1012) {
        r = m.direction(v);
      } else {
        // A direction keeps its length: it turns and mirrors, it does not grow.
        const double len = v.length();
        r = len > 1e-12 ? m.direction(v).normalized() * len : v;
      }
      edits.setPoint(tags, i, r, hasZ);
      i += hasZ ? 2 : 1;
    } else if (c == 1041 || c == 1042) {
      double v = 0.0;
      if (!readNumber(tags, i, v)) return false;
      edits.set(tags, i, v * (kind.similarity ? kind.scale : m.direction({1.0, 0.0, 0.0}).length()));
    }
  }
  return true;
}

void planExtrusion(TagList& tags, std::size_t extrusionIndex, std::size_t insertAt, const Vec3& extrusion,
                   Edits& edits) {
  if (extrusionIndex != kNone) {
    edits.setPoint(tags, extrusionIndex, extrusion, pointHasZ(tags, extrusionIndex));
  } else if (!Ocs::nearWorldZ(extrusion)) {
    edits.insertPoint(tags, insertAt, 210, extrusion);
  }
}

bool planScaled(TagList& tags, std::size_t i, double factor, Edits& edits) {
  if (i == kNone) return true;
  double v = 0.0;
  if (!readNumber(tags, i, v)) return false;
  edits.set(tags, i, v * factor);
  return true;
}

bool planWorldPoint(TagList& tags, std::size_t i, const Affine& m, Edits& edits) {
  if (i == kNone) return true;
  Vec3 p;
  bool hasZ = false;
  if (!readPoint(tags, i, p, hasZ)) return false;
  edits.setPoint(tags, i, m.point(p), hasZ);
  return true;
}

bool planWorldPoints(TagList& tags, std::size_t from, std::size_t to, int code, const Affine& m, Edits& edits) {
  for (std::size_t i = from; i < to; ++i) {
    if (tags.code(i) != code) continue;
    if (!planWorldPoint(tags, i, m, edits)) return false;
    i += pointHasZ(tags, i) ? 2 : 1;
  }
  return true;
}

std::size_t subclassMarker(const TagList& tags, std::string_view name) {
  for (std::size_t i = 0; i < tags.size(); ++i)
    if (tags.code(i) == 100 && trimBlanks(tags.text(i)) == name) return i;
  return kNone;
}

}  // namespace dxf::xform
