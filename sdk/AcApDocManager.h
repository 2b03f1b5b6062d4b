// The document manager: the open drawings, the current one, document locks, and the host's command-line
// input queue that a module feeds as if the user had typed (toolbar buttons, a dialog ending the prompt
// that runs beside it).
#pragma once

#include "sdk/AcChar.h"
#include "sdk/AcRxObject.h"
#include "sdk/AcadErrorStatus.h"

class AcDbDatabase;

namespace AcAp {

enum DocLockMode {
  kNone = 0x00,
  kAutoWrite = 0x01,
  kNotLocked = 0x02,
  kWrite = 0x04,
  kProtectedAutoWrite = 0x14,
  kRead = 0x20,
  kXWrite = 0x40,
};

}  // namespace AcAp

class ACRX_PORT AcApDocument : public AcRxObject {
 public:
  ACRX_DECLARE_MEMBERS(AcApDocument)

  // The drawing's file path; empty for a drawing never saved.
  virtual const ACHAR* fileName() const = 0;
  virtual AcDbDatabase* database() const = 0;
  virtual AcAp::DocLockMode myLockMode() const = 0;
};

class ACRX_PORT AcApDocManager : public AcRxObject {
 public:
  ACRX_DECLARE_MEMBERS(AcApDocManager)

  virtual AcApDocument* curDocument() const = 0;
  virtual AcApDocument* mdiActiveDocument() const = 0;
  virtual int documentCount() const = 0;

  // Locks nest: every lock needs its unlock. eNotApplicable for an unlock without a lock.
  virtual Acad::ErrorStatus lockDocument(AcApDocument* doc, AcAp::DocLockMode mode = AcAp::kWrite,
                                         const ACHAR* globalCmdName = nullptr,
                                         const ACHAR* localCmdName = nullptr, bool prompt = true) = 0;
  virtual Acad::ErrorStatus unlockDocument(AcApDocument* doc) = 0;

  // Queues text for the document's command line as typed input: "\n" (or "\r") ends one input, the
  // Escape character (27) cancels. Queued input is taken before anything else the user does, by the
  // running prompt or, when none runs, by the command line.
  virtual Acad::ErrorStatus sendStringToExecute(AcApDocument* doc, const ACHAR* text, bool activate = true,
                                                bool wrapUpInactiveDoc = false, bool echoString = true) = 0;
};

ACRX_PORT AcApDocManager* acDocManagerPtr();
#define acDocManager acDocManagerPtr()
