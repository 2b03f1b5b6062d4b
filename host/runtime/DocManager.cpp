#include "host/runtime/DocManager.h"

#include "host/WideText.h"
#include "host/db/Drawing.h"
#include "host/editor/Input.h"
#include "sdk/AcDbHostApplicationServices.h"

namespace host::runtime {

const ACHAR* Document::fileName() const {
  fileName_ = fromUtf8(host::drawingPath());
  return fileName_.c_str();
}

AcDbDatabase* Document::database() const {
  AcDbHostApplicationServices* services = acdbHostApplicationServices();
  return services ? services->workingDatabase() : nullptr;
}

Acad::ErrorStatus DocManager::lockDocument(AcApDocument* doc, AcAp::DocLockMode mode, const ACHAR*,
                                           const ACHAR*, bool) {
  if (doc && doc != &document_) return Acad::eNotFromThisDocument;
  // Every command runs on the one user-interface thread, so a lock never has to wait.
  if (document_.locks_++ == 0) document_.lockMode_ = mode;
  return Acad::eOk;
}

Acad::ErrorStatus DocManager::unlockDocument(AcApDocument* doc) {
  if (doc && doc != &document_) return Acad::eNotFromThisDocument;
  if (document_.locks_ == 0) return Acad::eNotApplicable;
  if (--document_.locks_ == 0) document_.lockMode_ = AcAp::kNotLocked;
  return Acad::eOk;
}

Acad::ErrorStatus DocManager::sendStringToExecute(AcApDocument* doc, const ACHAR* text, bool, bool, bool) {
  if (doc && doc != &document_) return Acad::eNotFromThisDocument;
  if (!text) return Acad::eInvalidInput;
  editor::queueInput(text);
  return Acad::eOk;
}

DocManager& docManager() {
  static DocManager* manager = new DocManager;
  return *manager;
}

}  // namespace host::runtime

AcApDocManager* acDocManagerPtr() { return &host::runtime::docManager(); }
