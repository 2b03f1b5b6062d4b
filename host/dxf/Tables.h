// The table layer of the DXF store: the TABLES section as its tables (LAYER, LTYPE, BLOCK_RECORD, STYLE, ...)
// and typed views over the records the host works with. Every table is kept whole; only the records the
// program changes or adds are written anew.
#pragma once

#include "host/dxf/Entity.h"

#include <deque>
#include <string>
#include <string_view>

namespace dxf {

// One table: its TABLE head record (0 TABLE, 2 name, handle, count...), its records and the closing ENDTAB.
struct Table {
  Entity head;                 // type "TABLE"
  std::deque<Entity> records;  // in file order; a deque so that records keep their address when one is added
  Entity end;                  // type "ENDTAB"

  std::string_view name() const;    // the raw text of the head's 2 tag ("LAYER", "LTYPE", ...)
  std::string_view handle() const;  // the head's handle (5), empty in files without handles
};

// A view over a LAYER record. Flags: 70 bit 1 = frozen, bit 4 = locked; a negative colour 62 = off.
// Names are raw file text here; the document converts them to and from UTF-8.
class LayerRecord {
 public:
  explicit LayerRecord(Entity& record) : record_(&record) {}

  std::string_view rawName() const;
  std::string_view handle() const;
  bool frozen() const;
  bool locked() const;
  bool off() const;
  int color() const;  // the colour index without the sign that marks "off" (7 when the record has none)
  std::string_view rawLinetype() const;  // the 6 tag, "CONTINUOUS" when the record has none

  void setFrozen(bool on);
  void setLocked(bool on);
  void setOff(bool on);
  void setColor(int index);  // keeps the on/off state
  void setRawLinetype(std::string_view name);

  Entity& record() const { return *record_; }

 private:
  void setFlag(int bit, bool on);
  Entity* record_;
};

// A view over an LTYPE record.
class LinetypeRecord {
 public:
  explicit LinetypeRecord(Entity& record) : record_(&record) {}
  std::string_view rawName() const;
  std::string_view handle() const;
  Entity& record() const { return *record_; }

 private:
  Entity* record_;
};

}  // namespace dxf
