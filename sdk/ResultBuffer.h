// The host's linked result buffer: a type code and one value.
#pragma once

#include "sdk/AcChar.h"

#include <cstdint>

using ads_real = double;
using ads_point = ads_real[3];
using ads_name = std::int64_t[2];

union ads_u_val {
  ads_real rreal;
  ads_real rpoint[3];
  short rint;
  ACHAR* rstring;
  std::int64_t rlname[2];
  std::int32_t rlong;
};

struct resbuf {
  resbuf* rbnext = nullptr;
  short restype = 0;
  ads_u_val resval{};
};
