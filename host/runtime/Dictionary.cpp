#include "host/runtime/Dictionary.h"

#include "host/runtime/CommandStack.h"
#include "host/runtime/DynamicLinker.h"

namespace host::runtime {

AcRxObject* Dictionary::at(const ACHAR* key) const {
  if (!key) return nullptr;
  auto it = entries_.find(key);
  return it == entries_.end() ? nullptr : it->second;
}

AcRxObject* Dictionary::atPut(const ACHAR* key, AcRxObject* object) {
  if (!key) return nullptr;
  AcRxObject*& slot = entries_[key];
  AcRxObject* previous = slot;
  slot = object;
  return previous;
}

AcRxObject* Dictionary::remove(const ACHAR* key) {
  if (!key) return nullptr;
  auto it = entries_.find(key);
  if (it == entries_.end()) return nullptr;
  AcRxObject* object = it->second;
  entries_.erase(it);
  return object;
}

bool Dictionary::has(const ACHAR* key) const { return key && entries_.count(key) != 0; }

Dictionary& classDictionary() {
  // Never destroyed: modules may still hold class descriptions while the process ends.
  static Dictionary* dictionary = new Dictionary;
  return *dictionary;
}

}  // namespace host::runtime

AcRxDictionary* acrxSysRegistry() {
  static host::runtime::Dictionary* registry = [] {
    auto* r = new host::runtime::Dictionary;
    r->atPut(ACRX_DYNAMIC_LINKER, &host::runtime::dynamicLinker());
    r->atPut(ACRX_COMMAND_DOCK, &host::runtime::commandStack());
    r->atPut(ACRX_CLASS_DICTIONARY, &host::runtime::classDictionary());
    host::runtime::registerBuiltinClasses();
    return r;
  }();
  return registry;
}
