// The dotted-pair trace of result buffers: the value kind follows the code ranges of drawing group codes.
#include "cad/AcDbDumpResbuf.h"
#include "sdk/ResultCodes.h"

#include <gtest/gtest.h>

#include <string>

namespace {

// The line written for a buffer of the given type; "untouched" when nothing is written.
template <class Fill>
std::wstring dump(short type, Fill fill) {
  resbuf rb;
  rb.restype = type;
  fill(rb.resval);
  std::wstring text = L"untouched";
  EXPECT_EQ(AcDbDumpResbuf(text, &rb), type);
  return text;
}

std::wstring dumpString(short type, const wchar_t* value) {
  return dump(type, [value](ads_u_val& v) { v.rstring = const_cast<ACHAR*>(value); });
}
std::wstring dumpReal(short type, double value) {
  return dump(type, [value](ads_u_val& v) { v.rreal = value; });
}
std::wstring dumpShort(short type, short value) {
  return dump(type, [value](ads_u_val& v) { v.rint = value; });
}
std::wstring dumpPoint(short type, double x, double y, double z) {
  return dump(type, [=](ads_u_val& v) {
    v.rpoint[0] = x;
    v.rpoint[1] = y;
    v.rpoint[2] = z;
  });
}

TEST(DumpResbuf, EachCodeRangeWritesItsKindOfLine) {
  EXPECT_EQ(dumpString(1000, L"Vermessung"), L"(1000 . \"Vermessung\")\n");
  EXPECT_EQ(dumpString(RTSTR, L""), L"(5005 . \"\")\n");
  EXPECT_EQ(dumpString(1, nullptr), L"(1 . \"\")\n") << "a missing string does not crash the trace";

  EXPECT_EQ(dumpPoint(10, 2561234.5674, 5634012.3456, -0.0004), L"(10 . 2561234.567 5634012.346 -0.000)\n");
  EXPECT_EQ(dumpPoint(RT3DPOINT, 0.5, 0, 0), L"(5009 . 0.500 0.000 0.000)\n");
  EXPECT_EQ(dumpReal(40, 0.125), L"(40 . 0.125)\n");
  std::wstring huge = dumpReal(RTREAL, 1e300);  // 301 digits before the point
  EXPECT_EQ(huge.rfind(L"(5001 . 1000000", 0), 0u);
  EXPECT_EQ(huge.substr(huge.size() - 6), L".000)\n");
  EXPECT_EQ(dumpShort(62, 6), L"(62 . 6)\n");
  EXPECT_EQ(dumpShort(90, -3), L"(90 . -3)\n") << "90 is shown as a 16-bit value";
  EXPECT_EQ(dumpShort(RTSHORT, 7), L"(5003 . 7)\n");
  for (short type : {20, 100, 240, 4999, 5000})
    EXPECT_EQ(dumpShort(type, 1), L"(" + std::to_wstring(type) + L" . Unknown type)\n");

  auto name = [](ads_u_val& v) {
    v.rlname[0] = 0x2af;
    v.rlname[1] = 0x99;
  };
  EXPECT_EQ(dump(-1, name), L"(-1 . <Entity name:      2af>)\n");

  // Codes without a showable value leave the text alone.
  EXPECT_EQ(dumpShort(-3, 1), L"untouched");
  EXPECT_EQ(dumpPoint(RTPOINT, 1, 2, 0), L"untouched");
  EXPECT_EQ(dumpShort(RTLONG, 1), L"untouched");
  std::wstring text = L"untouched";
  EXPECT_EQ(AcDbDumpResbuf(text, nullptr), RTNONE);
  EXPECT_EQ(text, L"untouched");
}

}  // namespace
