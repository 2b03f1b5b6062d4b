// The entity layer of the DXF store: one entity as its type and its tags, with the sub-entities that
// follow it in the file (the VERTEX records and SEQEND of a POLYLINE, the ATTRIBs and SEQEND of an INSERT).
// Table records, objects and the structural records (SECTION, TABLE, BLOCK, ENDSEC...) use the same shape.
#pragma once

#include "host/dxf/TagList.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace dxf {

struct Entity {
  std::string type;              // the text of the entity's 0 tag: "LINE", "LWPOLYLINE", ...
  TagList tags;                  // every tag after the 0 tag up to the next 0 tag
  std::vector<Entity> children;  // VERTEX / ATTRIB entities and the closing SEQEND, in file order
  std::string_view source;       // the entity's bytes as read (0 tag to the end of its last child);
                                 // written back as they stand while nothing in the entity changed
  bool erased = false;           // left out when the drawing is written
  bool paperSpace = false;       // of the ENTITIES section, drawn in paper space (decided once on reading)
  std::uint32_t journalStep = 0; // the last step of the change journal that kept this record's old state

  bool modified() const {
    if (tags.modified()) return true;
    for (const Entity& c : children)
      if (c.modified()) return true;
    return false;
  }

  // The raw value of the first tag with this code, or `fallback` when there is none.
  std::string_view value(int code, std::string_view fallback = {}) const {
    const auto i = tags.find(code);
    return i ? tags.text(*i) : fallback;
  }
};

}  // namespace dxf
