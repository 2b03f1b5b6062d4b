// The base of everything a drawing holds. An object is reached by its id and opened for reading or
// writing; the pointer the open hands out is valid until the matching close(), which ends the open and
// frees the in-memory object. Changes made while open for writing are part of the drawing at once.
//
// Open rules: any number of reads at a time (each open answers the same pointer and needs its own close),
// or one write; a read while written answers eWasOpenForWrite, a write while read answers
// eWasOpenForRead, a second write eWasOpenForWrite. Erased objects open only when asked for explicitly.
//
// An object made by the module with `new` belongs to no drawing until it is added to a table or appended
// to a block; from then on it is open for writing and the module closes it. close() on an object that never
// became part of a drawing frees it.
#pragma once

#include "sdk/AcDbObjectId.h"
#include "sdk/AcDbPort.h"
#include "sdk/AcadErrorStatus.h"

class AcDbDatabase;
class AcDbImpObject;  // the host's side of an object

namespace AcDb {

enum OpenMode {
  kForRead = 0,
  kForWrite = 1,
  kForNotify = 2,
};

}  // namespace AcDb

class ACDB_PORT AcDbObject {
 public:
  virtual ~AcDbObject();
  AcDbObject(const AcDbObject&) = delete;
  AcDbObject& operator=(const AcDbObject&) = delete;

  // Null while the object is not part of a drawing.
  AcDbObjectId objectId() const;
  AcDbObjectId ownerId() const;
  AcDbDatabase* database() const;

  // Ends one open; the last close frees the object. Any pointer to it is dangling afterwards.
  Acad::ErrorStatus close();
  // Erases (or with false restores) the object; needs an open for writing. Erased objects are not saved.
  Acad::ErrorStatus erase(bool erasing = true);
  bool isErased() const;

  bool isReadEnabled() const;
  bool isWriteEnabled() const;
  bool isNotifyEnabled() const;
  // True while the object belongs to no drawing (made with new and not yet added).
  bool isNewObject() const;

  // Turns the only read open into a write open, and back.
  Acad::ErrorStatus upgradeOpen();
  Acad::ErrorStatus downgradeOpen();

  AcDbImpObject* imp() const { return imp_; }

 protected:
  explicit AcDbObject(AcDbImpObject* imp) : imp_(imp) {}

 private:
  AcDbImpObject* imp_;
};
