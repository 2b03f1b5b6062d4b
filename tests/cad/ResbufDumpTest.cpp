// The dotted-pair trace of result buffers: the value kind follows the code ranges of drawing group codes.
#include "cad/AcDbDumpResbuf.h"
#include "sdk/ResultCodes.h"

#include <gtest/gtest.h>

#include <string>

namespace {

resbuf stringBuffer(short type, ACHAR* text) {
  resbuf rb;
  rb.restype = type;
  rb.resval.rstring = text;
  return rb;
}

resbuf realBuffer(short type, double value) {
  resbuf rb;
  rb.restype = type;
  rb.resval.rreal = value;
  return rb;
}

resbuf pointBuffer(short type, double x, double y, double z) {
  resbuf rb;
  rb.restype = type;
  rb.resval.rpoint[0] = x;
  rb.resval.rpoint[1] = y;
  rb.resval.rpoint[2] = z;
  return rb;
}

resbuf shortBuffer(short type, short value) {
  resbuf rb;
  rb.restype = type;
  rb.resval.rint = value;
  return rb;
}

std::wstring dump(const resbuf& rb) {
  std::wstring text = L"untouched";
  EXPECT_EQ(AcDbDumpResbuf(text, &rb), rb.restype);
  return text;
}

TEST(DumpResbuf, EachCodeRangeWritesItsKindOfLine) {
  ACHAR text[] = L"Vermessung";
  ACHAR layer[] = L"TRELLANOVA_10";
  ACHAR empty[] = L"";
  EXPECT_EQ(dump(stringBuffer(1000, text)), L"(1000 . \"Vermessung\")\n");
  EXPECT_EQ(dump(stringBuffer(8, layer)), L"(8 . \"TRELLANOVA_10\")\n");
  EXPECT_EQ(dump(stringBuffer(0, empty)), L"(0 . \"\")\n");
  EXPECT_EQ(dump(stringBuffer(RTSTR, text)), L"(5005 . \"Vermessung\")\n");

  EXPECT_EQ(dump(pointBuffer(10, 2561234.5674, 5634012.3456, -0.0004)),
            L"(10 . 2561234.567 5634012.346 -0.000)\n");
  EXPECT_EQ(dump(pointBuffer(239, 1, 2, 3)), L"(239 . 1.000 2.000 3.000)\n");
  EXPECT_EQ(dump(pointBuffer(RT3DPOINT, 0.5, 0, 0)), L"(5009 . 0.500 0.000 0.000)\n");
  EXPECT_EQ(dump(realBuffer(40, 0.125)), L"(40 . 0.125)\n");
  std::wstring huge = dump(realBuffer(RTREAL, 1e300));  // 301 digits before the point
  EXPECT_EQ(huge.rfind(L"(5001 . 1000000", 0), 0u) << "a huge real still fits";
  EXPECT_EQ(huge.substr(huge.size() - 6), L".000)\n");
  EXPECT_EQ(dump(shortBuffer(62, 6)), L"(62 . 6)\n");
  EXPECT_EQ(dump(shortBuffer(90, -3)), L"(90 . -3)\n") << "90 is shown as a 16-bit value";
  EXPECT_EQ(dump(shortBuffer(RTSHORT, 7)), L"(5003 . 7)\n");

  for (short type : {20, 100, 240, 4999, 5000}) {
    std::wstring expected = L"(" + std::to_wstring(type) + L" . Unknown type)\n";
    EXPECT_EQ(dump(shortBuffer(type, 1)), expected);
  }

  resbuf name;
  name.restype = -1;
  name.resval.rlname[0] = 0x2af;
  name.resval.rlname[1] = 0x99;
  EXPECT_EQ(dump(name), L"(-1 . <Entity name:      2af>)\n");
  name.restype = -2;
  EXPECT_EQ(dump(name), L"(-2 . <Entity name:      2af>)\n");
}

TEST(DumpResbuf, CodesWithoutAShowableValueWriteNothing) {
  EXPECT_EQ(dump(shortBuffer(-3, 1)), L"untouched");
  EXPECT_EQ(dump(pointBuffer(RTPOINT, 1, 2, 0)), L"untouched");
  EXPECT_EQ(dump(shortBuffer(RTLONG, 1)), L"untouched");
  std::wstring text = L"untouched";
  EXPECT_EQ(AcDbDumpResbuf(text, nullptr), RTNONE);
  EXPECT_EQ(text, L"untouched");
  // A string buffer without its string does not crash the trace.
  EXPECT_EQ(dump(stringBuffer(1, nullptr)), L"(1 . \"\")\n");
}

}  // namespace
