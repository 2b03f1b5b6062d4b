// The drawing's named tables: blocks, layers and linetypes, their records and iterators over them.
// Names are matched ignoring case, as CAD hosts do.
#pragma once

#include "sdk/AcCmColor.h"
#include "sdk/AcChar.h"
#include "sdk/AcDbObject.h"

#include <cstddef>
#include <vector>

class AcDbEntity;

// ---- records -------------------------------------------------------------------------------------------

class ACDB_PORT AcDbSymbolTableRecord : public AcDbObject {
 public:
  ~AcDbSymbolTableRecord() override;

  // A copy of the name; the caller frees it with delete[].
  Acad::ErrorStatus getName(ACHAR*& name) const;
  // The name itself, valid until the record is closed or renamed.
  Acad::ErrorStatus getName(const ACHAR*& name) const;
  // eInvalidInput for an empty name or one with characters a table name cannot hold;
  // eDuplicateRecordName when another record of the table has it.
  Acad::ErrorStatus setName(const ACHAR* name);

 protected:
  explicit AcDbSymbolTableRecord(AcDbImpObject* imp) : AcDbObject(imp) {}
};

class AcDbBlockTableRecordIterator;

class ACDB_PORT AcDbBlockTableRecord : public AcDbSymbolTableRecord {
 public:
  ~AcDbBlockTableRecord() override;

  // Makes the entity part of the drawing; it stays open for writing and the caller closes it. An entity
  // without a layer of its own goes on the current layer.
  Acad::ErrorStatus appendAcDbEntity(AcDbObjectId& id, AcDbEntity* entity);
  Acad::ErrorStatus appendAcDbEntity(AcDbEntity* entity);

  // The caller deletes the iterator.
  Acad::ErrorStatus newIterator(AcDbBlockTableRecordIterator*& iterator, bool atBeginning = true,
                                bool skipDeleted = true) const;

  // Model space and paper space layouts.
  bool isLayout() const;

  explicit AcDbBlockTableRecord(AcDbImpObject* imp) : AcDbSymbolTableRecord(imp) {}
};

class ACDB_PORT AcDbLayerTableRecord : public AcDbSymbolTableRecord {
 public:
  // A new layer: not frozen, not off, not locked, colour 7, linetype CONTINUOUS (when the drawing has it).
  AcDbLayerTableRecord();
  ~AcDbLayerTableRecord() override;

  bool isFrozen() const;
  Acad::ErrorStatus setIsFrozen(bool frozen);
  bool isOff() const;
  Acad::ErrorStatus setIsOff(bool off);
  bool isLocked() const;
  Acad::ErrorStatus setIsLocked(bool locked);
  // Frozen in viewports created from now on.
  bool VPDFLT() const;
  Acad::ErrorStatus setVPDFLT(bool frozenInNewViewports);

  AcCmColor color() const;
  // Layers take palette colours only: by-layer and by-block answer eInvalidInput.
  Acad::ErrorStatus setColor(const AcCmColor& color);

  AcDbObjectId linetypeObjectId() const;
  Acad::ErrorStatus setLinetypeObjectId(AcDbObjectId linetypeId);

  explicit AcDbLayerTableRecord(AcDbImpObject* imp) : AcDbSymbolTableRecord(imp) {}
};

class ACDB_PORT AcDbLinetypeTableRecord : public AcDbSymbolTableRecord {
 public:
  ~AcDbLinetypeTableRecord() override;

  explicit AcDbLinetypeTableRecord(AcDbImpObject* imp) : AcDbSymbolTableRecord(imp) {}
};

// ---- iterators -----------------------------------------------------------------------------------------

// Walks a table or a block in its drawing order. The order is fixed when the iterator is made; objects
// erased since are skipped when skipping is asked for.
class ACDB_PORT AcDbObjectIterationBase {
 public:
  virtual ~AcDbObjectIterationBase();
  AcDbObjectIterationBase(const AcDbObjectIterationBase&) = delete;
  AcDbObjectIterationBase& operator=(const AcDbObjectIterationBase&) = delete;

  void start(bool atBeginning = true, bool skipDeleted = true);
  bool done() const;
  void step(bool forward = true, bool skipDeleted = true);

  // For the host: the ids to walk.
  explicit AcDbObjectIterationBase(std::vector<AcDbObjectId> ids) : ids_(std::move(ids)) {}

 protected:
  AcDbObjectId current() const;

 private:
  bool skippable(std::size_t index, bool skipDeleted) const;
  void settle(bool forward, bool skipDeleted);

  std::vector<AcDbObjectId> ids_;
  std::size_t pos_ = 0;  // == ids_.size() when done
};

class ACDB_PORT AcDbSymbolTableIterator : public AcDbObjectIterationBase {
 public:
  using AcDbObjectIterationBase::AcDbObjectIterationBase;
  ~AcDbSymbolTableIterator() override;

  Acad::ErrorStatus getRecordId(AcDbObjectId& id) const;
  Acad::ErrorStatus getRecord(AcDbSymbolTableRecord*& record, AcDb::OpenMode mode,
                              bool openErasedRecord = false) const;
};

class ACDB_PORT AcDbBlockTableIterator : public AcDbSymbolTableIterator {
 public:
  using AcDbSymbolTableIterator::AcDbSymbolTableIterator;
  using AcDbSymbolTableIterator::getRecord;
  ~AcDbBlockTableIterator() override;

  Acad::ErrorStatus getRecord(AcDbBlockTableRecord*& record, AcDb::OpenMode mode,
                              bool openErasedRecord = false) const;
};

class ACDB_PORT AcDbLayerTableIterator : public AcDbSymbolTableIterator {
 public:
  using AcDbSymbolTableIterator::AcDbSymbolTableIterator;
  using AcDbSymbolTableIterator::getRecord;
  ~AcDbLayerTableIterator() override;

  Acad::ErrorStatus getRecord(AcDbLayerTableRecord*& record, AcDb::OpenMode mode,
                              bool openErasedRecord = false) const;
};

class ACDB_PORT AcDbBlockTableRecordIterator : public AcDbObjectIterationBase {
 public:
  using AcDbObjectIterationBase::AcDbObjectIterationBase;
  ~AcDbBlockTableRecordIterator() override;

  Acad::ErrorStatus getEntityId(AcDbObjectId& id) const;
  Acad::ErrorStatus getEntity(AcDbEntity*& entity, AcDb::OpenMode mode, bool openErasedEntity = false) const;
};

// ---- tables --------------------------------------------------------------------------------------------

class ACDB_PORT AcDbSymbolTable : public AcDbObject {
 public:
  ~AcDbSymbolTable() override;

  bool has(const ACHAR* name) const;
  bool has(AcDbObjectId id) const;
  // eKeyNotFound when the table has no record of that name (erased records count only when asked for).
  Acad::ErrorStatus getAt(const ACHAR* name, AcDbObjectId& id, bool getErasedRecord = false) const;

 protected:
  explicit AcDbSymbolTable(AcDbImpObject* imp) : AcDbObject(imp) {}
};

class ACDB_PORT AcDbBlockTable : public AcDbSymbolTable {
 public:
  ~AcDbBlockTable() override;
  using AcDbSymbolTable::getAt;

  Acad::ErrorStatus getAt(const ACHAR* name, AcDbBlockTableRecord*& record, AcDb::OpenMode mode,
                          bool openErasedRecord = false) const;
  Acad::ErrorStatus newIterator(AcDbBlockTableIterator*& iterator, bool atBeginning = true,
                                bool skipDeleted = true) const;

  explicit AcDbBlockTable(AcDbImpObject* imp) : AcDbSymbolTable(imp) {}
};

class ACDB_PORT AcDbLayerTable : public AcDbSymbolTable {
 public:
  ~AcDbLayerTable() override;
  using AcDbSymbolTable::getAt;

  Acad::ErrorStatus getAt(const ACHAR* name, AcDbLayerTableRecord*& record, AcDb::OpenMode mode,
                          bool openErasedRecord = false) const;
  // Makes the new record part of the drawing; it stays open for writing and the caller closes it.
  // eDuplicateRecordName when the table already has its name, eInvalidInput when it has none.
  Acad::ErrorStatus add(AcDbObjectId& id, AcDbLayerTableRecord* record);
  Acad::ErrorStatus add(AcDbLayerTableRecord* record);
  Acad::ErrorStatus newIterator(AcDbLayerTableIterator*& iterator, bool atBeginning = true,
                                bool skipDeleted = true) const;

  explicit AcDbLayerTable(AcDbImpObject* imp) : AcDbSymbolTable(imp) {}
};

class ACDB_PORT AcDbLinetypeTable : public AcDbSymbolTable {
 public:
  ~AcDbLinetypeTable() override;
  using AcDbSymbolTable::getAt;

  Acad::ErrorStatus getAt(const ACHAR* name, AcDbLinetypeTableRecord*& record, AcDb::OpenMode mode,
                          bool openErasedRecord = false) const;

  explicit AcDbLinetypeTable(AcDbImpObject* imp) : AcDbSymbolTable(imp) {}
};

// Model space and the names of the standard records.
inline constexpr const ACHAR* ACDB_MODEL_SPACE = L"*Model_Space";
inline constexpr const ACHAR* ACDB_PAPER_SPACE = L"*Paper_Space";
