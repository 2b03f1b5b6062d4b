// The host's dictionary of named run-time objects; the system registry and the class dictionary are two.
#pragma once

#include "sdk/AcRxRegistry.h"

#include <map>
#include <string>

namespace host::runtime {

class Dictionary : public AcRxDictionary {
 public:
  AcRxObject* at(const ACHAR* key) const override;
  AcRxObject* atPut(const ACHAR* key, AcRxObject* object) override;
  AcRxObject* remove(const ACHAR* key) override;
  bool has(const ACHAR* key) const override;
  unsigned int numEntries() const override { return static_cast<unsigned int>(entries_.size()); }

  const std::map<std::wstring, AcRxObject*>& entries() const { return entries_; }

 private:
  std::map<std::wstring, AcRxObject*> entries_;
};

// The class dictionary (also reachable under ACRX_CLASS_DICTIONARY in the system registry).
Dictionary& classDictionary();

// Puts the host's own classes into the class dictionary (they are otherwise made on first use).
void registerBuiltinClasses();

}  // namespace host::runtime
