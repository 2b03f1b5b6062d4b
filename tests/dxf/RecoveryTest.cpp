// Recovering damaged drawings: each kind of damage that a normal load refuses is repaired and named once
// with its count, what survives keeps its values, and the repaired drawing opens without recovery.
#include "DxfTestSupport.h"

#include "host/dxf/Document.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

const std::string kHeader = "  0\nSECTION\n  2\nHEADER\n  9\n$ACADVER\n  1\nAC1015\n  9\n$HANDSEED\n  5\n40\n  0\nENDSEC\n";
const std::string kLine = "  0\nLINE\n  5\n2A\n100\nAcDbEntity\n  8\n0\n100\nAcDbLine\n 10\n1.5\n 20\n2.5\n 30\n0.0\n"
                          " 11\n3.5\n 21\n4.5\n 31\n0.0\n";
const std::string kPoint = "  0\nPOINT\n  5\n2B\n100\nAcDbEntity\n  8\n0\n100\nAcDbPoint\n 10\n7.0\n 20\n8.0\n 30\n0.0\n";

struct Recovered {
  std::unique_ptr<dxf::Document> doc;
  std::vector<std::string> repairs;
  std::string saved;  // the repaired drawing as written
};

// The damaged drawing must be refused as it stands and recovered with the given repairs; the repaired
// drawing must then open as it stands and come back byte for byte.
Recovered recover(const std::string& damaged) {
  std::string error;
  EXPECT_FALSE(dxf::Document::parse(damaged, "damaged.dxf", error)) << "a normal load accepted the damage";
  Recovered r;
  r.doc = dxf::Document::parse(damaged, "damaged.dxf", error, &r.repairs);
  EXPECT_TRUE(r.doc) << error;
  if (!r.doc) return r;
  r.saved = r.doc->bytes();
  auto again = dxf::Document::parse(r.saved, "repaired.dxf", error);
  EXPECT_TRUE(again) << error << "\n" << r.saved;
  if (again) {
    EXPECT_TRUE(again->bytes() == r.saved);
  }
  return r;
}

std::vector<std::string> handles(const dxf::Document& doc) {
  std::vector<std::string> out;
  for (const dxf::Entity* e : doc.modelSpace()) out.emplace_back(dxf::Document::handleOf(*e));
  return out;
}

TEST(DxfRecovery, OpenEndsAreClosedAndCutFilesKeepWhatCameBeforeTheCut) {
  const std::string whole = kHeader + "  0\nSECTION\n  2\nENTITIES\n" + kLine + kPoint + "  0\nENDSEC\n  0\nEOF\n";
  Recovered r = recover(whole.substr(0, whole.find("  0\nENDSEC\n  0\nEOF")));
  EXPECT_THAT(r.repairs, ElementsAre("missing ENDSEC added: 1", "missing EOF added: 1"));
  EXPECT_THAT(handles(*r.doc), ElementsAre("2A", "2B"));
  // Cut inside the point's value: the dangling code goes, the point keeps what it had.
  r = recover(whole.substr(0, whole.find(" 20\n8.0") + 4));
  EXPECT_THAT(r.repairs, ElementsAre("group code without its value at the end dropped: 1", "missing ENDSEC added: 1",
                                     "missing EOF added: 1"));
  ASSERT_EQ(r.doc->modelSpace().size(), 2u);
  EXPECT_EQ(r.doc->modelSpace()[1]->value(10), "7.0");
  EXPECT_FALSE(r.doc->modelSpace()[1]->tags.find(20));
  // A polyline cut after its vertices gets its SEQEND, a table its ENDTAB, a block its ENDBLK.
  r = recover(kHeader + "  0\nSECTION\n  2\nTABLES\n  0\nTABLE\n  2\nLAYER\n  0\nLAYER\n  2\nA\n 70\n0\n  0\nENDSEC\n"
              "  0\nSECTION\n  2\nBLOCKS\n  0\nBLOCK\n  2\nB\n  0\nENDSEC\n"
              "  0\nSECTION\n  2\nENTITIES\n  0\nPOLYLINE\n  8\n0\n 66\n1\n  0\nVERTEX\n  8\n0\n 10\n1.0\n 20\n2.0\n"
              "  0\nENDSEC\n  0\nEOF\n");
  EXPECT_THAT(r.repairs, ElementsAre("missing ENDTAB added: 1", "missing ENDBLK added: 1", "missing SEQEND of a POLYLINE added: 1"));
  EXPECT_TRUE(r.doc->findLayer("A"));
  ASSERT_EQ(r.doc->modelSpace().size(), 1u);
  EXPECT_EQ(r.doc->modelSpace()[0]->children.size(), 2u);
  // Mixed line endings: a record whose type line ends in a stray carriage return is rewritten (a line
  // inside it was skipped) into a file with bare line feeds; the carriage return must stay its own and
  // not turn into a line ending that makes the record a new SECTION.
  r = recover("  0\nSECTION\n  2\nENTITIES\n  0\nSECTION\r \nno code\n  0\nENDSEC\n  0\nEOF\n");
  EXPECT_THAT(r.saved, HasSubstr("SECTION\r\r\n"));
}

TEST(DxfRecovery, WhatStandsOutsideItsPlaceIsMovedThereOrDropped) {
  // Header variables after the entities' ENDSEC, a stray ENDSEC, entities outside any section, a second
  // ENTITIES section, garbage lines and a tag with an unknown code inside a record.
  const std::string damaged = kHeader + "  0\nSECTION\n  2\nENTITIES\n" + kLine +
                              "  0\nENDSEC\n  9\n$EXTMIN\n 10\n0.0\n 20\n0.0\n  0\nENDSEC\n" + kPoint +
                              "  0\nSECTION\n  2\nENTITIES\n  0\nCIRCLE\n  8\n0\n 10\n1.0\n 20\n1.0\n"
                              "garbage line\n 85\nunknown\n 40\n5.0\n  0\nENDSEC\n  0\nEOF\n";
  Recovered r = recover(damaged);
  EXPECT_THAT(r.repairs, ElementsAre("header variables outside the HEADER section moved into it: 1",
                                     "misplaced ENDSEC records dropped: 1",
                                     "entities outside a section moved into the ENTITIES section: 1",
                                     "lines without a group code skipped: 1", "tags with an unknown group code dropped: 1",
                                     "repeated ENTITIES sections merged into the first: 1"));
  EXPECT_EQ(r.doc->rawHeader("$EXTMIN"), "0.0");
  std::vector<std::string> types;
  for (const dxf::Entity* e : r.doc->modelSpace()) types.emplace_back(e->type.view());
  EXPECT_THAT(types, ElementsAre("LINE", "CIRCLE", "POINT"));
  EXPECT_EQ(r.doc->modelSpace()[1]->value(40), "5.0");
  EXPECT_EQ(r.saved.find("garbage"), std::string::npos);
  EXPECT_EQ(r.saved.find("unknown"), std::string::npos);
  // Every line with a NUL byte is skipped, not only the first: the repaired text must hold none.
  const std::string nuls = kHeader + "  0\nSECTION\n  2\nENTITIES\n" + kLine + std::string(" 40\n1\0\n", 7) + kPoint +
                           std::string("  0\nCIR\0CLE\n", 12) + "  0\nENDSEC\n  0\nEOF\n";
  r = recover(nuls);
  EXPECT_THAT(r.repairs, ElementsAre("tags with an unreadable value dropped: 2"));
  EXPECT_EQ(r.saved.find('\0'), std::string::npos);
  // The same after a line that is too long as well as holding one.
  const std::string longNul = kHeader + "  0\nSECTION\n  2\nENTITIES\n" + kLine + " 40\n" + std::string(9000, 'x') +
                              std::string("\0\n", 2) + kPoint + std::string("999\nnul\0here\n", 14) + "  0\nENDSEC\n  0\nEOF\n";
  r = recover(longNul);
  EXPECT_EQ(r.saved.find('\0'), std::string::npos);
  // A second section of a kind is refused as it stands: a reader would see only the first.
  const std::string twice = kHeader + "  0\nSECTION\n  2\nENTITIES\n" + kLine + "  0\nENDSEC\n"
                            "  0\nSECTION\n  2\nENTITIES\n" + kPoint + "  0\nENDSEC\n  0\nEOF\n";
  std::string error;
  EXPECT_FALSE(dxf::Document::parse(twice, "twice.dxf", error));
  EXPECT_THAT(error, HasSubstr("more than one ENTITIES section"));
}

TEST(DxfRecovery, TableEntriesWithoutTheirTableAndBadHandlesAreMadeWhole) {
  // BLOCK_RECORD entries without their TABLE record (their owner names the table's handle 1), a
  // duplicate and an empty entity handle.
  const std::string damaged =
      kHeader + "  0\nSECTION\n  2\nTABLES\n"
      "  0\nBLOCK_RECORD\n  5\n1F\n330\n1\n100\nAcDbSymbolTableRecord\n100\nAcDbBlockTableRecord\n  2\n*Model_Space\n"
      "  0\nENDTAB\n  0\nENDSEC\n"
      "  0\nSECTION\n  2\nENTITIES\n" + kLine + kLine + "  0\nPOINT\n  5\n\n  8\n0\n 10\n0.0\n 20\n0.0\n"
      "  0\nENDSEC\n  0\nEOF\n";
  std::string error;
  std::vector<std::string> repairs;
  auto doc = dxf::Document::parse(damaged, "damaged.dxf", error, &repairs);
  ASSERT_TRUE(doc) << error;
  EXPECT_THAT(repairs, ElementsAre("missing TABLE records in front of table entries added: 1",
                                   "records with a duplicate handle given a new one: 1",
                                   "records with an empty or unreadable handle given a new one: 1"));
  EXPECT_THAT(handles(*doc), ElementsAre("2A", "40", "41"));
  EXPECT_EQ(doc->rawHeader("$HANDSEED"), "42");
  EXPECT_THAT(doc->bytes(),
              HasSubstr("  0\nTABLE\n  2\nBLOCK_RECORD\n  5\n1\n330\n0\n100\nAcDbSymbolTable\n 70\n1\n  0\nBLOCK_RECORD\n"));
  // A drawing without the damage needs no repair, and recovery says so with an empty list.
  auto sound = dxf::Document::parse(kHeader + "  0\nEOF\n", "sound.dxf", error, &repairs);
  ASSERT_TRUE(sound) << error;
  EXPECT_TRUE(repairs.empty());
  // What is no drawing at all stays refused.
  EXPECT_FALSE(dxf::Document::parse("Easting;Northing\n1;2\n", "points.csv", error, &repairs));
  EXPECT_THAT(error, HasSubstr("recovery found no section"));
}

TEST(DxfRecovery, EveryCutOfARealDrawingRecoversToOneThatOpens) {
  const std::string whole = dxftest::readFile(dxftest::corpus()[4]);  // R2010, handles and all tables
  for (std::size_t cut = whole.find("ENTITIES"); cut < whole.size(); cut += 211) {
    std::string error;
    std::vector<std::string> repairs;
    auto doc = dxf::Document::parse(whole.substr(0, cut), "cut.dxf", error, &repairs);
    ASSERT_TRUE(doc) << cut << ": " << error;
    const std::string saved = doc->bytes();
    ASSERT_TRUE(dxf::Document::parse(saved, "saved.dxf", error)) << cut << ": " << error;
  }
}

}  // namespace
