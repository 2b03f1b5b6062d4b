// The host's services to the database layer; the one thing modules need from it is the working drawing.
#pragma once

#include "sdk/AcDbPort.h"

class AcDbDatabase;

class ACDB_PORT AcDbHostApplicationServices {
 public:
  virtual ~AcDbHostApplicationServices();

  // The drawing commands work on; null while no drawing is open.
  AcDbDatabase* workingDatabase() const;
};

ACDB_PORT AcDbHostApplicationServices* acdbHostApplicationServices();

// The working drawing, the short way.
inline AcDbDatabase* acdbCurDwg() { return acdbHostApplicationServices()->workingDatabase(); }
