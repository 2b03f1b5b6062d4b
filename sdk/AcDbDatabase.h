// A drawing: its tables and its current layer. The host makes and owns databases; modules reach the
// current drawing through acdbHostApplicationServices()->workingDatabase().
#pragma once

#include "sdk/AcDbObject.h"
#include "sdk/AcDbPort.h"

class AcDbBlockTable;
class AcDbLayerTable;
class AcDbLinetypeTable;
class AcDbImpDatabase;  // the host's side of a drawing

class ACDB_PORT AcDbDatabase {
 public:
  // For the host.
  explicit AcDbDatabase(AcDbImpDatabase* imp) : imp_(imp) {}
  ~AcDbDatabase();
  AcDbDatabase(const AcDbDatabase&) = delete;
  AcDbDatabase& operator=(const AcDbDatabase&) = delete;

  Acad::ErrorStatus getBlockTable(AcDbBlockTable*& table, AcDb::OpenMode mode = AcDb::kForRead);
  Acad::ErrorStatus getLayerTable(AcDbLayerTable*& table, AcDb::OpenMode mode = AcDb::kForRead);
  Acad::ErrorStatus getLinetypeTable(AcDbLinetypeTable*& table, AcDb::OpenMode mode = AcDb::kForRead);

  AcDbObjectId blockTableId() const;
  AcDbObjectId layerTableId() const;
  AcDbObjectId linetypeTableId() const;

  // The layer new entities go on.
  AcDbObjectId clayer() const;
  // eInvalidInput unless the id names a layer of this drawing; a frozen layer answers eInvalidLayer.
  Acad::ErrorStatus setClayer(AcDbObjectId layerId);

  AcDbImpDatabase* imp() const { return imp_; }

 private:
  AcDbImpDatabase* imp_;
};
