// Opening objects by id. The pointer is valid until the matching close().
#pragma once

#include "sdk/AcDbEntity.h"
#include "sdk/AcDbObject.h"
#include "sdk/AcDbPort.h"

// eNullObjectId, eUnknownHandle (no object of an open drawing), eWasErased, eWasOpenForRead,
// eWasOpenForWrite, eWasOpenForNotify; on failure the pointer is null.
ACDB_PORT Acad::ErrorStatus acdbOpenAcDbObject(AcDbObject*& object, AcDbObjectId id, AcDb::OpenMode mode,
                                               bool openErased = false);
// As above; eNotAnEntity for objects that are not entities.
ACDB_PORT Acad::ErrorStatus acdbOpenAcDbEntity(AcDbEntity*& entity, AcDbObjectId id, AcDb::OpenMode mode,
                                               bool openErased = false);

// Opens as a given class; eNotThatKindOfClass (and nothing stays open) when the object is another kind.
template <class T>
Acad::ErrorStatus acdbOpenObject(T*& object, AcDbObjectId id, AcDb::OpenMode mode, bool openErased = false) {
  object = nullptr;
  AcDbObject* any = nullptr;
  Acad::ErrorStatus es = acdbOpenAcDbObject(any, id, mode, openErased);
  if (es != Acad::eOk) return es;
  object = dynamic_cast<T*>(any);
  if (object == nullptr) {
    any->close();
    return Acad::eNotThatKindOfClass;
  }
  return Acad::eOk;
}
