// Locks the current document for writing for as long as the object lives. Code that changes the drawing
// from outside a command's own flow (a modeless dialog, a toolbar) takes one first.
#pragma once

#include "sdk/AcadErrorStatus.h"

class AcApDocument;

class AcDocLockCurrentDocument {
 public:
  AcDocLockCurrentDocument();
  // Releases the lock when construction took one.
  virtual ~AcDocLockCurrentDocument();
  AcDocLockCurrentDocument(const AcDocLockCurrentDocument&) = delete;
  AcDocLockCurrentDocument& operator=(const AcDocLockCurrentDocument&) = delete;

  // Acad::eOk (0) when the document is locked; otherwise why not (eNoDocument without a current one).
  Acad::ErrorStatus Status() const { return status_; }

 private:
  Acad::ErrorStatus status_ = Acad::eOk;
  AcApDocument* document_ = nullptr;
};
