// The identity of a database-resident object: a small value that stays valid while its drawing is open,
// whether or not the object itself is open. The null id names nothing.
#pragma once

#include "sdk/AcDbPort.h"
#include "sdk/ResultBuffer.h"
#include "sdk/AcadErrorStatus.h"

#include <compare>
#include <cstdint>

class AcDbDatabase;

class ACDB_PORT AcDbObjectId {
 public:
  constexpr AcDbObjectId() = default;

  bool isNull() const { return serial_ == 0; }
  void setNull() { serial_ = 0; }

  // True while the id names an object of an open drawing (erased or not).
  bool isValid() const;
  bool isErased() const;
  // The drawing the object lives in; null for the null id or an id whose drawing was closed.
  AcDbDatabase* database() const;

  // The id as a plain number (the first word of an entity name); ids are never reused in a session.
  std::int64_t asOldId() const { return static_cast<std::int64_t>(serial_); }
  AcDbObjectId& setFromOldId(std::int64_t oldId) {
    serial_ = static_cast<std::uint64_t>(oldId);
    return *this;
  }

  constexpr auto operator<=>(const AcDbObjectId&) const = default;

  static const AcDbObjectId kNull;

 private:
  std::uint64_t serial_ = 0;
};

inline constexpr AcDbObjectId AcDbObjectId::kNull{};

// Entity names of result buffers and selection functions: the first word carries the id.
ACDB_PORT Acad::ErrorStatus acdbGetAdsName(ads_name& name, AcDbObjectId id);
ACDB_PORT Acad::ErrorStatus acdbGetObjectId(AcDbObjectId& id, const ads_name name);
