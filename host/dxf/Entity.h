// The entity layer of the DXF store: one entity as its type and its tags, with the sub-entities that
// follow it in the file (the VERTEX records and SEQEND of a POLYLINE, the ATTRIBs and SEQEND of an INSERT).
// Table records, objects and the structural records (SECTION, TABLE, BLOCK, ENDSEC...) use the same shape.
#pragma once

#include "host/dxf/RecordType.h"
#include "host/dxf/TagList.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace dxf {

struct Entity;

// The sub-entities of a POLYLINE or INSERT. Most entities have none, and a drawing has millions of records,
// so an entity without them pays one pointer instead of an empty vector.
class Children {
 public:
  Children() = default;
  Children(const Children& other);
  Children& operator=(const Children& other);
  Children(Children&&) noexcept = default;
  Children& operator=(Children&&) noexcept = default;
  ~Children() = default;

  // Defined below Entity: the list's members need the complete type.
  bool empty() const;
  std::size_t size() const;
  Entity* begin();
  Entity* end();
  const Entity* begin() const;
  const Entity* end() const;
  Entity& operator[](std::size_t i);
  const Entity& operator[](std::size_t i) const;
  Entity& front() { return *begin(); }
  const Entity& front() const { return *begin(); }
  Entity& back();
  const Entity& back() const;

  Entity& emplace_back();
  void push_back(Entity entity);
  void pop_back();
  void clear() { list_.reset(); }

 private:
  std::vector<Entity>& list();
  std::unique_ptr<std::vector<Entity>> list_;
};

struct Entity {
  RecordType type;               // the text of the entity's 0 tag: "LINE", "LWPOLYLINE", ...
  TagList tags;                  // every tag after the 0 tag up to the next 0 tag
  Children children;             // VERTEX / ATTRIB entities and the closing SEQEND, in file order
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

inline Children::Children(const Children& other)
    : list_(other.list_ ? std::make_unique<std::vector<Entity>>(*other.list_) : nullptr) {}
inline Children& Children::operator=(const Children& other) {
  if (this != &other) list_ = other.list_ ? std::make_unique<std::vector<Entity>>(*other.list_) : nullptr;
  return *this;
}
inline std::vector<Entity>& Children::list() {
  if (!list_) list_ = std::make_unique<std::vector<Entity>>();
  return *list_;
}
inline bool Children::empty() const { return !list_ || list_->empty(); }
inline std::size_t Children::size() const { return list_ ? list_->size() : 0; }
inline Entity* Children::begin() { return list_ ? list_->data() : nullptr; }
inline const Entity* Children::begin() const { return list_ ? list_->data() : nullptr; }
inline Entity* Children::end() { return list_ ? list_->data() + list_->size() : nullptr; }
inline const Entity* Children::end() const { return list_ ? list_->data() + list_->size() : nullptr; }
inline Entity& Children::operator[](std::size_t i) { return begin()[i]; }
inline const Entity& Children::operator[](std::size_t i) const { return begin()[i]; }
inline Entity& Children::back() { return end()[-1]; }
inline const Entity& Children::back() const { return end()[-1]; }
inline Entity& Children::emplace_back() { return list().emplace_back(); }
inline void Children::push_back(Entity entity) { list().push_back(std::move(entity)); }
inline void Children::pop_back() { list_->pop_back(); }

}  // namespace dxf
