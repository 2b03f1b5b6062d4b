#include "app/AcRxArxApp.h"

#include "app/ArxEntries.h"
#include "sdk/AcEd.h"
#include "sdk/AcEdCommandStack.h"
#include "sdk/AcRxRegistry.h"

namespace {

// Looked up afresh for every command, as the host may replace its services between messages.
AcEdCommandStack* commandStack() { return AcEdCommandStack::cast(acrxSysRegistry()->at(ACRX_COMMAND_DOCK)); }

// The function's name, loaded from the string table the first time when the entry gives none.
const ACHAR* lispName(LispFunctionEntry& entry) {
  if (entry.name == nullptr) ArxLoadEntryName(entry.name, entry.nameBuffer, entry.nameId);
  return entry.name;
}

}  // namespace

AcRx::AppRetCode AcRxArxApp::On_kInitAppMsg(void* packet) {
  const AcRx::AppRetCode result = AcRxDbxApp::On_kInitAppMsg(packet);
  ArxEntryTable<ArxCommandEntry>& commands = ArxCommandTable();
  for (std::size_t i = 0; i < commands.Count(); ++i) {
    ArxCommandEntry& entry = commands[i];
    if (entry.localName == nullptr) ArxLoadEntryName(entry.localName, entry.localNameBuffer, entry.localNameId);
    // Session commands run outside any document and load no resources of their own.
    HINSTANCE resources = (entry.commandFlags & ACRX_CMD_SESSION) != 0 ? nullptr : m_hResourceInstance;
    // A refused command (a name taken by another module) does not stop the others.
    if (AcEdCommandStack* stack = commandStack())
      stack->addCommand(entry.groupName, entry.globalName, entry.localName, entry.commandFlags, entry.handler,
                        entry.uiContext, -1, resources, nullptr);
  }
  return result;
}

AcRx::AppRetCode AcRxArxApp::On_kUnloadAppMsg(void* packet) {
  const AcRx::AppRetCode result = AcRxDbxApp::On_kUnloadAppMsg(packet);
  ArxEntryTable<ArxCommandEntry>& commands = ArxCommandTable();
  for (std::size_t i = 0; i < commands.Count(); ++i)
    if (AcEdCommandStack* stack = commandStack()) stack->removeCmd(commands[i].groupName, commands[i].globalName);
  return result;
}

AcRx::AppRetCode AcRxArxApp::On_kLoadDwgMsg(void*) {
  ArxEntryTable<LispFunctionEntry>& functions = LispFunctionTable();
  for (std::size_t i = 0; i < functions.Count(); ++i) {
    LispFunctionEntry& entry = functions[i];
    acedDefun(lispName(entry), static_cast<int>(i));
    if (entry.registerFunction) acedRegFunc(entry.function, static_cast<int>(i));
  }
  return AcRx::kRetOK;
}

AcRx::AppRetCode AcRxArxApp::On_kUnloadDwgMsg(void*) {
  ArxEntryTable<LispFunctionEntry>& functions = LispFunctionTable();
  for (std::size_t i = 0; i < functions.Count(); ++i) acedUndef(lispName(functions[i]), static_cast<int>(i));
  return AcRx::kRetOK;
}

AcRx::AppRetCode AcRxArxApp::On_kInvkSubrMsg(void*) {
  const int code = acedGetFunCode();
  ArxEntryTable<LispFunctionEntry>& functions = LispFunctionTable();
  if (code >= 0 && static_cast<std::size_t>(code) < functions.Count() && functions[code].function)
    functions[code].function();
  return AcRx::kRetOK;
}
