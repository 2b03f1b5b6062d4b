// Drawings written as DXF text for the scene tests: an R2000 file with the given layers, blocks and entities.
#pragma once

#include "host/dxf/Document.h"
#include "host/gui/scene/SceneBuilder.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace scenetest {

// `layers`: LAYER records (each "0\nLAYER\n2\nNAME\n70\nFLAGS\n62\nCOLOUR\n"); `blocks`: BLOCK...ENDBLK records;
// `entities`: model-space entity records.
inline std::string drawing(const std::string& layers, const std::string& blocks, const std::string& entities) {
  return "0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1015\n0\nENDSEC\n"
         "0\nSECTION\n2\nTABLES\n0\nTABLE\n2\nLAYER\n" + layers +
         "0\nENDTAB\n0\nENDSEC\n0\nSECTION\n2\nBLOCKS\n" + blocks + "0\nENDSEC\n0\nSECTION\n2\nENTITIES\n" +
         entities + "0\nENDSEC\n0\nEOF\n";
}

inline std::string layer(const std::string& name, int flags, int colour) {
  return "0\nLAYER\n2\n" + name + "\n70\n" + std::to_string(flags) + "\n62\n" + std::to_string(colour) + "\n";
}

struct Built {
  std::unique_ptr<dxf::Document> document;
  host::gui::Scene scene;
};

inline Built build(const std::string& text) {
  std::string error;
  Built b;
  b.document = dxf::Document::parse(text, "test.dxf", error);
  EXPECT_TRUE(b.document) << error;
  if (b.document) b.scene = host::gui::buildScene(*b.document);
  return b;
}

// The world coordinates of vertex `i` of path `p`.
inline host::gui::Vec2 vertex(const host::gui::Scene& s, std::size_t p, std::size_t i) {
  return s.toWorld(s.vertices[s.paths.at(p).first + i]);
}

}  // namespace scenetest
