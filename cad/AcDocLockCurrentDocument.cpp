#include "cad/AcDocLockCurrentDocument.h"

#include "sdk/AcApDocManager.h"

AcDocLockCurrentDocument::AcDocLockCurrentDocument() {
  AcApDocManager* manager = acDocManager;
  AcApDocument* document = manager != nullptr ? manager->curDocument() : nullptr;
  if (document == nullptr) {
    status_ = Acad::eNoDocument;
    return;
  }
  status_ = manager->lockDocument(document, AcAp::kWrite);
  if (status_ == Acad::eOk) document_ = document;
}

AcDocLockCurrentDocument::~AcDocLockCurrentDocument() {
  // Locks nest in the document manager: release exactly the one taken here.
  if (document_ != nullptr) acDocManager->unlockDocument(document_);
}
