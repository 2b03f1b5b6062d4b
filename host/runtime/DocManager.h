// The document manager of this host: one document, the working drawing (which may be none yet).
#pragma once

#include "sdk/AcApDocManager.h"

#include <string>

namespace host::runtime {

class Document : public AcApDocument {
 public:
  const ACHAR* fileName() const override;
  AcDbDatabase* database() const override;
  AcAp::DocLockMode myLockMode() const override { return locks_ > 0 ? lockMode_ : AcAp::kNotLocked; }

 private:
  friend class DocManager;
  int locks_ = 0;
  AcAp::DocLockMode lockMode_ = AcAp::kNotLocked;
  mutable std::wstring fileName_;  // keeps the text fileName() hands out
};

class DocManager : public AcApDocManager {
 public:
  AcApDocument* curDocument() const override { return &document_; }
  AcApDocument* mdiActiveDocument() const override { return &document_; }
  int documentCount() const override { return 1; }
  Acad::ErrorStatus lockDocument(AcApDocument* doc, AcAp::DocLockMode mode, const ACHAR* globalCmdName,
                                 const ACHAR* localCmdName, bool prompt) override;
  Acad::ErrorStatus unlockDocument(AcApDocument* doc) override;
  Acad::ErrorStatus sendStringToExecute(AcApDocument* doc, const ACHAR* text, bool activate,
                                        bool wrapUpInactiveDoc, bool echoString) override;

 private:
  mutable Document document_;
};

DocManager& docManager();

}  // namespace host::runtime
