// The host's status codes with their names, as the host's interface declares them.
#pragma once

#include "sdk/AcChar.h"

#include <cstddef>
#include <cstdint>

struct AcDbStatusName {
  std::int32_t code;
  const ACHAR* name;
};

// Every code the host declares, from Acad::eOk up to the Internet codes, in ascending order. Codes the
// host skips (19, 78, 79, ...) have no row. Generated from host-status-names.txt by make_status_names.py.
inline constexpr std::size_t kAcDbStatusNameCount = 333;
extern const AcDbStatusName kAcDbStatusNames[kAcDbStatusNameCount];
