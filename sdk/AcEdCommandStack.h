// The host's command stack: modules add their commands by group, each with a language-independent global
// name and a displayed local name, and remove them again by group and global name.
#pragma once

#include "sdk/AcChar.h"
#include "sdk/AcRxObject.h"
#include "sdk/AcadErrorStatus.h"

#define ACRX_COMMAND_DOCK L"ACAD_REGISTERED_COMMANDS"

// Command flags.
constexpr int ACRX_CMD_MODAL = 0x00000000;
constexpr int ACRX_CMD_TRANSPARENT = 0x00000001;  // may run inside another command's prompt ('name)
constexpr int ACRX_CMD_USEPICKSET = 0x00000002;
constexpr int ACRX_CMD_REDRAW = 0x00000004;
constexpr int ACRX_CMD_NOINTERNALLOCK = 0x00020000;
constexpr int ACRX_CMD_DOCREADLOCK = 0x00080000;
constexpr int ACRX_CMD_DOCEXCLUSIVELOCK = 0x00100000;
constexpr int ACRX_CMD_SESSION = 0x00200000;  // runs in the application context, not a document's

class AcEdUIContext;

class ACRX_PORT AcEdCommand : public AcRxObject {
 public:
  ACRX_DECLARE_MEMBERS(AcEdCommand)

  virtual AcRxFunctionPtr functionAddr() const = 0;
  virtual const ACHAR* groupName() const = 0;
  virtual const ACHAR* globalName() const = 0;
  virtual const ACHAR* localName() const = 0;
  virtual int commandFlags() const = 0;
  virtual AcEdUIContext* UIContext() const = 0;
  virtual int functionCode() const = 0;
  virtual HINSTANCE resourceHandle() const = 0;
};

class ACRX_PORT AcEdCommandStack : public AcRxObject {
 public:
  ACRX_DECLARE_MEMBERS(AcEdCommandStack)

  // eInvalidInput for a missing group, name or handler; eDuplicateKey when the group already holds the
  // global or the local name.
  virtual Acad::ErrorStatus addCommand(const ACHAR* cmdGroupName, const ACHAR* cmdGlobalName,
                                       const ACHAR* cmdLocalName, int commandFlags,
                                       AcRxFunctionPtr functionAddr, AcEdUIContext* UIContext = nullptr,
                                       int fcode = -1, HINSTANCE hResourceHandle = nullptr,
                                       AcEdCommand** cmdPtrRet = nullptr) = 0;
  // eKeyNotFound when the group holds no such command.
  virtual Acad::ErrorStatus removeCmd(const ACHAR* cmdGroupName, const ACHAR* cmdGlobalName) = 0;
  virtual Acad::ErrorStatus removeGroup(const ACHAR* groupName) = 0;

  // Exact (case-insensitive) lookups over all groups, the most recently added group first; null if none.
  virtual AcEdCommand* lookupGlobalCmd(const ACHAR* globalName) const = 0;
  virtual AcEdCommand* lookupLocalCmd(const ACHAR* localName) const = 0;
  // A name as the user types it: "_name" asks for a global name, a plain name for a local name first
  // and then a global one; a leading "_" of a registered global name does not count.
  virtual AcEdCommand* lookupCmd(const ACHAR* typedName) const = 0;
};
