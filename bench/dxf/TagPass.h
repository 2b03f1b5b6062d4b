// The floor the DXF store is measured against: one pass over the tags of an ASCII drawing with no object
// model at all. Every tag is read (group-code line, value line, LF or CRLF), every coordinate (groups 10
// to 38) is shifted by a fixed offset and written as the shortest text that reads back to the same
// double, and every tag is written out; the file is replaced as safely as the store saves (a temporary
// beside it, flushed to disk, renamed over it).
//
// Whatever the store does beyond this (entities, tables, undo, checks) is what its job costs above the
// floor.
#pragma once

#include <array>
#include <cstddef>
#include <filesystem>
#include <string>

namespace bench {

// The shift of the benchmarks: a survey drawing moved from Gauss-Krueger towards UTM-size numbers.
inline constexpr std::array<double, 3> kSurveyShift{-2200000.25, 141234.75, 12.5};

struct TagPassCount {
  std::size_t tags = 0;
  std::size_t shifted = 0;  // coordinate values that were moved
};

// Shifts x (groups 10-18), y (20-28) and z (30-38) by `offset`. False with `error` when the file cannot be
// read or written or holds a line that is no tag (a group code that is not a number, a coordinate that is
// not a number, a code line without its value line).
bool shiftEveryCoordinate(const std::filesystem::path& in, const std::filesystem::path& out,
                          const std::array<double, 3>& offset, TagPassCount& count, std::string& error);

}  // namespace bench
