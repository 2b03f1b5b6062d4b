#include "app/ArxEntries.h"

#include "sdk/ui/Resources.h"

#include <string>

// Function-local tables: the registrations of other files may run before this file's statics.
ArxEntryTable<ArxCommandEntry>& ArxCommandTable() {
  static ArxEntryTable<ArxCommandEntry> table;
  return table;
}

ArxEntryTable<LispFunctionEntry>& LispFunctionTable() {
  static ArxEntryTable<LispFunctionEntry> table;
  return table;
}

ArxEntryTable<RxClassEntry>& RxClassTable() {
  static ArxEntryTable<RxClassEntry> table;
  return table;
}

ArxCommandRegistration::ArxCommandRegistration(const ACHAR* groupName, const ACHAR* globalName,
                                               const ACHAR* localName, int flags, AcRxFunctionPtr handler) {
  ArxCommandEntry entry;
  entry.handler = handler;
  entry.localName = localName;
  entry.globalName = globalName;
  entry.groupName = groupName;
  entry.commandFlags = flags;
  entry.localNameId = -1;
  ArxCommandTable().Append(entry);
}

void ArxLoadEntryName(const ACHAR*& name, ACHAR (&buffer)[kArxNameBufferSize], int stringId) {
  std::wstring text;
  AfxLoadString(stringId, text);
  const std::size_t length = text.size() < kArxNameBufferSize - 1 ? text.size() : kArxNameBufferSize - 1;
  text.copy(buffer, length);
  buffer[length] = L'\0';
  name = buffer;
}
