// Walking tables and blocks over a fixed list of ids.
#include "host/db/DbModel.h"
#include "sdk/AcDbEntity.h"
#include "sdk/AcDbOpen.h"
#include "sdk/AcDbSymbolTables.h"

namespace {

template <class Record>
Acad::ErrorStatus openAt(bool done, AcDbObjectId id, Record*& record, AcDb::OpenMode mode, bool openErased) {
  record = nullptr;
  if (done) return Acad::eIteratorDone;
  return acdbOpenObject(record, id, mode, openErased);
}

}  // namespace

AcDbObjectIterationBase::~AcDbObjectIterationBase() = default;

bool AcDbObjectIterationBase::skippable(std::size_t index, bool skipDeleted) const {
  return skipDeleted && ids_[index].isErased();
}

// Moves from pos_ (inclusive) in the given direction to the first position not skipped; running off
// either end leaves the iterator done.
void AcDbObjectIterationBase::settle(bool forward, bool skipDeleted) {
  while (pos_ < ids_.size() && skippable(pos_, skipDeleted)) {
    if (forward) {
      ++pos_;
    } else if (pos_ == 0) {
      pos_ = ids_.size();
    } else {
      --pos_;
    }
  }
}

void AcDbObjectIterationBase::start(bool atBeginning, bool skipDeleted) {
  pos_ = atBeginning || ids_.empty() ? 0 : ids_.size() - 1;
  settle(atBeginning, skipDeleted);
}

bool AcDbObjectIterationBase::done() const { return pos_ >= ids_.size(); }

void AcDbObjectIterationBase::step(bool forward, bool skipDeleted) {
  if (done()) return;
  if (forward)
    ++pos_;
  else
    pos_ = pos_ == 0 ? ids_.size() : pos_ - 1;
  settle(forward, skipDeleted);
}

AcDbObjectId AcDbObjectIterationBase::current() const { return done() ? AcDbObjectId() : ids_[pos_]; }

AcDbSymbolTableIterator::~AcDbSymbolTableIterator() = default;

Acad::ErrorStatus AcDbSymbolTableIterator::getRecordId(AcDbObjectId& id) const {
  id = current();
  return done() ? Acad::eIteratorDone : Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTableIterator::getRecord(AcDbSymbolTableRecord*& record, AcDb::OpenMode mode,
                                                     bool openErasedRecord) const {
  return openAt(done(), current(), record, mode, openErasedRecord);
}

AcDbBlockTableIterator::~AcDbBlockTableIterator() = default;

Acad::ErrorStatus AcDbBlockTableIterator::getRecord(AcDbBlockTableRecord*& record, AcDb::OpenMode mode,
                                                    bool openErasedRecord) const {
  return openAt(done(), current(), record, mode, openErasedRecord);
}

AcDbLayerTableIterator::~AcDbLayerTableIterator() = default;

Acad::ErrorStatus AcDbLayerTableIterator::getRecord(AcDbLayerTableRecord*& record, AcDb::OpenMode mode,
                                                    bool openErasedRecord) const {
  return openAt(done(), current(), record, mode, openErasedRecord);
}

AcDbBlockTableRecordIterator::~AcDbBlockTableRecordIterator() = default;

Acad::ErrorStatus AcDbBlockTableRecordIterator::getEntityId(AcDbObjectId& id) const {
  id = current();
  return done() ? Acad::eIteratorDone : Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTableRecordIterator::getEntity(AcDbEntity*& entity, AcDb::OpenMode mode,
                                                          bool openErasedEntity) const {
  entity = nullptr;
  if (done()) return Acad::eIteratorDone;
  return acdbOpenAcDbEntity(entity, current(), mode, openErasedEntity);
}
