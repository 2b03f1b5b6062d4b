// The run-time classes of the host interface and the class tree that modules extend.
#include "host/runtime/Dictionary.h"
#include "sdk/AcApDocManager.h"
#include "sdk/AcEdCommandStack.h"
#include "sdk/AcRxRegistry.h"

#include <set>
#include <vector>

namespace {

// Classes made by newAcRxClass belong to the class dictionary; the built-in ones live for the process.
std::set<AcRxClass*>& ownedClasses() {
  static auto* owned = new std::set<AcRxClass*>;
  return *owned;
}

AcRxClass* builtinClass(const ACHAR* name, AcRxClass* parent) {
  auto* cls = new AcRxClass(name, parent ? parent->name() : L"");
  cls->setParent(parent);
  host::runtime::classDictionary().atPut(name, cls);
  return cls;
}

AcRxClass* lookupClass(const std::wstring& name) {
  return AcRxClass::cast(host::runtime::classDictionary().at(name.c_str()));
}

}  // namespace

AcRxObject::~AcRxObject() = default;

AcRxClass* AcRxObject::desc() {
  static AcRxClass* cls = builtinClass(L"AcRxObject", nullptr);
  return cls;
}
AcRxClass* AcRxObject::isA() const { return desc(); }

bool AcRxObject::isKindOf(const AcRxClass* cls) const {
  const AcRxClass* mine = isA();
  return mine && mine->isDerivedFrom(cls);
}

AcRxClass::AcRxClass(const ACHAR* name, const ACHAR* parentName)
    : name_(name ? name : L""), parentName_(parentName ? parentName : L"") {}

bool AcRxClass::isDerivedFrom(const AcRxClass* other) const {
  if (!other) return false;
  for (const AcRxClass* c = this; c; c = c->myParent())
    if (c == other) return true;
  return false;
}

#define HOST_BUILTIN_CLASS(CLASS, PARENT)                             \
  AcRxClass* CLASS::desc() {                                          \
    static AcRxClass* cls = builtinClass(ACRX_WIDE_NAME(CLASS), PARENT::desc()); \
    return cls;                                                       \
  }                                                                   \
  AcRxClass* CLASS::isA() const { return desc(); }

HOST_BUILTIN_CLASS(AcRxClass, AcRxObject)
HOST_BUILTIN_CLASS(AcRxDictionary, AcRxObject)
HOST_BUILTIN_CLASS(AcRxDynamicLinker, AcRxObject)
HOST_BUILTIN_CLASS(AcEdCommand, AcRxObject)
HOST_BUILTIN_CLASS(AcEdCommandStack, AcRxObject)
HOST_BUILTIN_CLASS(AcApDocument, AcRxObject)
HOST_BUILTIN_CLASS(AcApDocManager, AcRxObject)

namespace host::runtime {

void registerBuiltinClasses() {
  for (auto desc : {&AcRxObject::desc, &AcRxClass::desc, &AcRxDictionary::desc, &AcRxDynamicLinker::desc,
                    &AcEdCommand::desc, &AcEdCommandStack::desc, &AcApDocument::desc, &AcApDocManager::desc})
    desc();
}

}  // namespace host::runtime

AcRxClass* newAcRxClass(const ACHAR* className, const ACHAR* parentClassName) {
  if (!className || !*className) return nullptr;
  if (AcRxClass* existing = lookupClass(className)) return existing;
  auto* cls = new AcRxClass(className, parentClassName);
  cls->setParent(lookupClass(cls->parentName()));
  host::runtime::classDictionary().atPut(className, cls);
  ownedClasses().insert(cls);
  return cls;
}

void acrxBuildClassHierarchy() {
  for (const auto& [name, object] : host::runtime::classDictionary().entries()) {
    auto* cls = AcRxClass::cast(object);
    if (cls && !cls->myParent() && *cls->parentName()) cls->setParent(lookupClass(cls->parentName()));
  }
}

void deleteAcRxClassBranch(AcRxClass* root) {
  // The host's own classes stay: only branches that modules made can go.
  if (!root || !ownedClasses().count(root)) return;
  std::vector<AcRxClass*> branch;
  for (const auto& [name, object] : host::runtime::classDictionary().entries()) {
    auto* cls = AcRxClass::cast(object);
    if (cls && cls->isDerivedFrom(root)) branch.push_back(cls);
  }
  for (AcRxClass* cls : branch) {
    host::runtime::classDictionary().remove(cls->name());
  }
  // Freed only after every member is out, since membership was decided through parent pointers.
  for (AcRxClass* cls : branch)
    if (ownedClasses().erase(cls)) delete cls;
}
