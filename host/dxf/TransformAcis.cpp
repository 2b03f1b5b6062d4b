// Solids, regions and bodies. Their shape is ACIS data that only a solid modeller understands: from R2000
// to R2010 the lines of a SAT file, each character c stored as 159 - c and then caret-escaped like any DXF
// text. The geometry itself is not rewritten. ACIS places every body in space through a transform record
// (3x3 matrix without scale, translation, scale factor, flags, applied to row vectors), so each body gets
// one, or its existing one is followed by the drawing's matrix: the smallest change a modeller reads back
// exactly. From R2013 on the data is binary, kept apart in the ACDSDATA section; such solids, data with
// modelling history, and records laid out in ways not recognised here stay as they are and answer
// NotSupported.
#include "host/dxf/TransformTypes.h"

#include <algorithm>
#include <charconv>
#include <string>
#include <string_view>
#include <vector>

namespace dxf::xform {

namespace {

using S = TransformStatus;

constexpr std::size_t kMaxLine = 255;  // what one group 1 or 3 tag of this data may hold

// One line of the SAT text: a group 1 tag and the group 3 tags that continue a line too long for one.
struct SatLine {
  std::vector<std::size_t> tags;
  std::string text;
};

// Cuts an encoded line into `count` or more pieces of at most kMaxLine bytes, never inside a caret escape.
std::vector<std::string> pieces(const std::string& encoded, std::size_t count) {
  count = std::max({count, std::size_t{1}, (encoded.size() + kMaxLine - 2) / (kMaxLine - 1)});
  const std::size_t size = (encoded.size() + count - 1) / count;
  std::vector<std::string> out;
  std::size_t at = 0;
  while (at < encoded.size()) {
    std::size_t end = std::min(encoded.size(), at + size);
    if (end < encoded.size() && encoded[end - 1] == '^') ++end;
    out.push_back(encoded.substr(at, end - at));
    at = end;
  }
  if (out.empty()) out.emplace_back();
  return out;
}

bool decode(std::string_view raw, std::string& out) {
  for (std::size_t i = 0; i < raw.size(); ++i) {
    int ch = static_cast<unsigned char>(raw[i]);
    if (ch == '^') {
      if (++i >= raw.size()) return false;
      const int next = static_cast<unsigned char>(raw[i]);
      ch = next == ' ' ? '^' : next - 64;
      if (ch < 0) return false;
    }
    if (ch == ' ') {
      out += ' ';
    } else {
      if (ch > 159) return false;
      out += static_cast<char>(159 - ch);
    }
  }
  return true;
}

std::string encode(std::string_view plain) {
  std::string out;
  for (char c : plain) {
    if (c == ' ') {
      out += ' ';
      continue;
    }
    const int ch = 159 - static_cast<unsigned char>(c);
    if (ch == '^')
      out += "^ ";
    else if (ch < 32)
      out += '^', out += static_cast<char>(ch + 64);
    else
      out += static_cast<char>(ch);
  }
  return out;
}

std::vector<std::string_view> tokens(std::string_view s) {
  std::vector<std::string_view> out;
  std::size_t i = 0;
  while (i < s.size()) {
    while (i < s.size() && s[i] == ' ') ++i;
    const std::size_t start = i;
    while (i < s.size() && s[i] != ' ') ++i;
    if (i > start) out.push_back(s.substr(start, i - start));
  }
  return out;
}

bool toLong(std::string_view s, long& v) {
  auto [end, ec] = std::from_chars(s.data(), s.data() + s.size(), v);
  return ec == std::errc() && end == s.data() + s.size();
}

bool toDouble(std::string_view s, double& v) {
  auto [end, ec] = std::from_chars(s.data(), s.data() + s.size(), v);
  return ec == std::errc() && end == s.data() + s.size() && std::isfinite(v);
}

std::string number(double v) {
  if (v == 0.0) v = 0.0;  // no "-0"
  char buf[32];
  auto [end, ec] = std::to_chars(buf, buf + sizeof buf, v);
  return std::string(buf, end);
}

// A body placement: p' = scale * (p * a) + t, with p a row vector.
struct Placement {
  double a[3][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
  double t[3] = {0, 0, 0};
  double scale = 1.0;
  bool shear = false;
};

// The tokens of a transform record after its header: 9 + 3 + 1 numbers and three flags, then "#".
bool readPlacement(const std::vector<std::string_view>& tk, std::size_t from, Placement& p) {
  if (tk.size() != from + 17 || tk.back() != "#") return false;
  for (int k = 0; k < 9; ++k)
    if (!toDouble(tk[from + k], p.a[k / 3][k % 3])) return false;
  for (int k = 0; k < 3; ++k)
    if (!toDouble(tk[from + 9 + k], p.t[k])) return false;
  if (!toDouble(tk[from + 12], p.scale) || p.scale == 0.0) return false;
  p.shear = tk[from + 15] == "shear";
  return true;
}

// The drawing's matrix after the placement. Our matrix acts on column vectors: L = s R, so the row-vector
// matrix becomes a R^T, the scale s0 s and the translation L t0 + t.
Placement follow(const Placement& p, const Affine& m, double s) {
  Placement out;
  for (int i = 0; i < 3; ++i)
    for (int j = 0; j < 3; ++j) {
      double v = 0.0;
      for (int k = 0; k < 3; ++k) v += p.a[i][k] * m.l[j][k] / s;
      out.a[i][j] = v;
    }
  const Vec3 t = m.point({p.t[0], p.t[1], p.t[2]});
  out.t[0] = t.x, out.t[1] = t.y, out.t[2] = t.z;
  out.scale = p.scale * s;
  out.shear = p.shear;
  return out;
}

std::string placementRecord(const Placement& p, std::string_view head) {
  std::string r(head);
  bool rotated = false;
  for (int i = 0; i < 3; ++i)
    for (int j = 0; j < 3; ++j) {
      r += ' ' + number(p.a[i][j]);
      rotated = rotated || std::fabs(p.a[i][j] - (i == j ? 1.0 : 0.0)) > 1e-12;
    }
  for (double v : p.t) r += ' ' + number(v);
  r += ' ' + number(p.scale);
  const double det = p.a[0][0] * (p.a[1][1] * p.a[2][2] - p.a[1][2] * p.a[2][1]) -
                     p.a[0][1] * (p.a[1][0] * p.a[2][2] - p.a[1][2] * p.a[2][0]) +
                     p.a[0][2] * (p.a[1][0] * p.a[2][1] - p.a[1][1] * p.a[2][0]);
  r += rotated ? " rotate" : " no_rotate";
  r += det < 0.0 ? " reflect" : " no_reflect";
  r += p.shear ? " shear #" : " no_shear #";
  return r;
}

struct Record {
  std::size_t line;  // the line holding the whole record
  bool whole;        // the record is that line and nothing else
};

class SatPlan {
 public:
  SatPlan(TagList& t, const Context& c) : t_(t), c_(c) {}

  S run(std::size_t from, std::size_t to) {
    if (!readLines(from, to)) return S::NotSupported;
    if (lines_.size() < 4) return S::NotSupported;
    // Header: version, record count (0: not counted), entity count, flags; from version 2.0 on two more
    // lines with the product and the units.
    const auto head = tokens(lines_[0].text);
    long version = 0, count = 0;
    if (head.size() < 4 || !toLong(head[0], version) || !toLong(head[1], count)) return S::NotSupported;
    // Modelling history refers to the records as they were; it is not rewritten here.
    for (const SatLine& line : lines_)
      if (line.text.starts_with("Begin-of-ACIS-History")) return S::NotSupported;
    std::size_t end = version < 200 ? 1 : 3;  // one past the last record line
    std::vector<Record> records;
    bool open = false;
    for (; end < lines_.size(); ++end) {
      const std::string_view text = lines_[end].text;
      if (text.starts_with("End-of-") || text.starts_with("Begin-of-")) break;
      const std::size_t hash = text.find('#');
      const bool closes = hash != std::string_view::npos;
      // Records this reader can count: each ends its line, one per line at most.
      if (closes && (text.find_first_not_of(' ', hash + 1) != std::string_view::npos ||
                     text.find('#', hash + 1) != std::string_view::npos))
        return S::NotSupported;
      if (closes) records.push_back({end, !open});
      open = !closes;
    }
    // The records must be the ones the header counts, or the pointers would be read against other ones.
    if (open || records.empty() || (count > 0 && records.size() != static_cast<std::size_t>(count)))
      return S::NotSupported;
    numbered_ = tokens(lines_[records.front().line].text).front().starts_with('-');
    withHistoryId_ = version >= 700;

    const double s = c_.kind.scale;
    std::vector<bool> followed(records.size(), false);
    std::vector<std::string> added;
    long found = 0;
    for (std::size_t r = 0; r < records.size(); ++r) {
      auto tk = tokens(lines_[records[r].line].text);
      const std::size_t first = numbered_ ? 1 : 0;
      if (tk.size() <= first || tk[first] != "body") continue;
      ++found;
      if (!records[r].whole || tk.size() < first + 3) return S::NotSupported;
      // Pointers and the history number only; the placement is the last pointer.
      for (std::size_t k = first + 1; k + 1 < tk.size(); ++k) {
        long v = 0;
        if (!(tk[k].starts_with('$') ? toLong(tk[k].substr(1), v) : toLong(tk[k], v))) return S::NotSupported;
      }
      const std::string_view ptr = tk[tk.size() - 2];
      long target = 0;
      if (!ptr.starts_with('$') || !toLong(ptr.substr(1), target)) return S::NotSupported;
      if (target < 0) {
        const std::size_t index = records.size() + added.size();
        added.push_back(placementRecord(follow(Placement{}, c_.m, s), recordHead(index)));
        std::string line;
        for (std::size_t k = 0; k + 2 < tk.size(); ++k) line.append(tk[k]).append(" ");
        line += "$" + std::to_string(index) + " #";
        setLine(records[r].line, line);
        continue;
      }
      const auto idx = static_cast<std::size_t>(target);
      if (idx >= records.size() || !records[idx].whole) return S::NotSupported;
      if (followed[idx]) continue;  // bodies sharing a placement move it once
      const auto placed = tokens(lines_[records[idx].line].text);
      const std::size_t header = first + (withHistoryId_ ? 3 : 2);
      Placement p;
      if (placed.size() <= first || placed[first] != "transform" || !readPlacement(placed, header, p))
        return S::NotSupported;
      std::string head;
      for (std::size_t k = 0; k < header; ++k) head.append(k ? " " : "").append(placed[k]);
      setLine(records[idx].line, placementRecord(follow(p, c_.m, s), head));
      followed[idx] = true;
    }
    if (found == 0) return S::NotSupported;  // nothing recognised as a body: nothing could be placed
    if (count > 0 && !added.empty()) {
      std::string line = std::to_string(count + static_cast<long>(added.size()));
      line = std::string(head[0]) + " " + line;
      for (std::size_t k = 2; k < head.size(); ++k) line.append(" ").append(head[k]);
      setLine(0, line);
    }
    // A changed line keeps its tags, continued by more where it grew; new records follow the last one,
    // before the end marker (or whatever follows the SAT text).
    for (const auto& [line, encoded] : changed_) {
      const std::vector<std::size_t>& tags = lines_[line].tags;
      std::vector<std::string> parts = pieces(encoded, tags.size());
      parts.resize(std::max(parts.size(), tags.size()));  // an empty continuation adds nothing to the line
      for (std::size_t k = 0; k < parts.size(); ++k) {
        if (k < tags.size())
          c_.edits.setText(t_, tags[k], parts[k]);
        else
          c_.edits.insertText(t_, tags.back() + 1, 3, parts[k]);
      }
    }
    const std::size_t at = lines_[end - 1].tags.back() + 1;
    for (const std::string& record : added) {
      const std::vector<std::string> parts = pieces(encode(record), 1);
      for (std::size_t k = 0; k < parts.size(); ++k) c_.edits.insertText(t_, at, k == 0 ? 1 : 3, parts[k]);
    }
    return S::Ok;
  }

 private:
  bool readLines(std::size_t from, std::size_t to) {
    for (std::size_t i = from; i < to; ++i) {
      const int code = t_.code(i);
      if (code != 1 && code != 3) continue;
      if (code == 3 && lines_.empty()) return false;
      std::string text;
      if (!decode(t_.text(i), text)) return false;
      if (code == 1) {
        lines_.push_back({{i}, std::move(text)});
      } else {
        if (t_.text(i - 1).ends_with('^')) return false;  // an escape cut in two
        lines_.back().tags.push_back(i);
        lines_.back().text += text;
      }
    }
    return true;
  }

  std::string recordHead(std::size_t index) const {
    std::string head = numbered_ ? "-" + std::to_string(index) + " " : std::string();
    return head + (withHistoryId_ ? "transform $-1 -1" : "transform $-1");
  }

  void setLine(std::size_t line, const std::string& text) { changed_.emplace_back(line, encode(text)); }

  TagList& t_;
  const Context& c_;
  std::vector<SatLine> lines_;
  std::vector<std::pair<std::size_t, std::string>> changed_;
  bool numbered_ = false;
  bool withHistoryId_ = false;
};

}  // namespace

TransformStatus transformAcis(Entity& e, const Context& c) {
  // A placement with a scale factor but no shear: only a similarity has one.
  if (!c.kind.similarity) return S::CannotScaleNonUniformly;
  TagList& t = e.tags;
  const std::size_t own = subclassMarker(t, "AcDbModelerGeometry");
  if (own == kNone) return S::NotSupported;
  const CodeIndex idx(t, own + 1);
  // Format 1 is the encoded SAT text; data kept elsewhere (binary, in ACDSDATA) has no group 1 lines.
  if (!idx.has(70) || t.integer(idx[70]).value_or(0) != 1 || !idx.has(1)) return S::NotSupported;
  return SatPlan(t, c).run(own + 1, idx.end());
}

}  // namespace dxf::xform
