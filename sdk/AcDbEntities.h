// The entity types a module creates itself. Entities of other types read from a drawing are opened as
// plain AcDbEntity objects.
#pragma once

#include "sdk/AcDbEntity.h"
#include "sdk/AcGePoint3d.h"

class ACDB_PORT AcDbPoint : public AcDbEntity {
 public:
  AcDbPoint();
  explicit AcDbPoint(const AcGePoint3d& position);
  ~AcDbPoint() override;

  AcGePoint3d position() const;
  Acad::ErrorStatus setPosition(const AcGePoint3d& position);

  // For the host: wraps an object it opens.
  explicit AcDbPoint(AcDbImpObject* imp) : AcDbEntity(imp) {}
};

class ACDB_PORT AcDbLine : public AcDbEntity {
 public:
  AcDbLine();
  AcDbLine(const AcGePoint3d& start, const AcGePoint3d& end);
  ~AcDbLine() override;

  AcGePoint3d startPoint() const;
  AcGePoint3d endPoint() const;
  Acad::ErrorStatus setStartPoint(const AcGePoint3d& point);
  Acad::ErrorStatus setEndPoint(const AcGePoint3d& point);

  // For the host: wraps an object it opens.
  explicit AcDbLine(AcDbImpObject* imp) : AcDbEntity(imp) {}
};
