// The entries of the module's three tables and the tables themselves.
#pragma once

#include "app/ArxEntryTable.h"
#include "sdk/AcChar.h"
#include "sdk/AcRx.h"

class AcEdUIContext;
class AcRxClass;

// Room for a name loaded from the string table.
inline constexpr int kArxNameBufferSize = 132;

struct ArxCommandEntry {
  AcRxFunctionPtr handler = nullptr;
  const ACHAR* localName = nullptr;  // null: loaded from string localNameId into localNameBuffer
  const ACHAR* globalName = nullptr;
  const ACHAR* groupName = nullptr;
  ACHAR localNameBuffer[kArxNameBufferSize] = {};
  int commandFlags = 0;
  AcEdUIContext* uiContext = nullptr;
  int localNameId = -1;  // -1 when the local name is given directly
};

struct LispFunctionEntry {
  int (*function)() = nullptr;
  const ACHAR* name = nullptr;  // null: loaded from string nameId into nameBuffer
  ACHAR nameBuffer[kArxNameBufferSize] = {};
  bool registerFunction = false;  // acedRegFunc as well, so the host may call it directly
  int nameId = -1;
};

struct RxClassEntry {
  AcRxClass* (*description)() = nullptr;
  void (*initialise)() = nullptr;
};

ArxEntryTable<ArxCommandEntry>& ArxCommandTable();
ArxEntryTable<LispFunctionEntry>& LispFunctionTable();
ArxEntryTable<RxClassEntry>& RxClassTable();

// A static object of this type appends its command when the module file is loaded.
class ArxCommandRegistration {
 public:
  ArxCommandRegistration(const ACHAR* groupName, const ACHAR* globalName, const ACHAR* localName, int flags,
                         AcRxFunctionPtr handler);
};

// Points an entry without a name of its own at the named string of the module's resources (at most
// kArxNameBufferSize - 1 characters); the name stays empty when the string is missing.
void ArxLoadEntryName(const ACHAR*& name, ACHAR (&buffer)[kArxNameBufferSize], int stringId);
