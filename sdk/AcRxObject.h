// The root of the run-time class system: every object the host hands out through its registry knows its
// run-time class, so that a module can check what it looked up before using it.
#pragma once

#include "sdk/AcChar.h"
#include "sdk/AcRx.h"

#include <string>

class AcRxClass;

// Declares the run-time class members of CLASS: its description, isA() and a checked cast.
#define ACRX_DECLARE_MEMBERS(CLASS)                                                     \
  static AcRxClass* desc();                                                             \
  AcRxClass* isA() const override;                                                      \
  static CLASS* cast(const AcRxObject* object) {                                        \
    return object && object->isKindOf(desc()) ? static_cast<CLASS*>(const_cast<AcRxObject*>(object)) \
                                              : nullptr;                                \
  }

class ACRX_PORT AcRxObject {
 public:
  virtual ~AcRxObject();
  static AcRxClass* desc();
  virtual AcRxClass* isA() const;
  bool isKindOf(const AcRxClass* cls) const;
  static AcRxObject* cast(const AcRxObject* object) { return const_cast<AcRxObject*>(object); }
};

// A run-time class: a name and its parent. Classes a module defines are made with newAcRxClass and
// linked to their parents by acrxBuildClassHierarchy().
class ACRX_PORT AcRxClass : public AcRxObject {
 public:
  ACRX_DECLARE_MEMBERS(AcRxClass)

  AcRxClass(const ACHAR* name, const ACHAR* parentName);
  AcRxClass(const AcRxClass&) = delete;
  AcRxClass& operator=(const AcRxClass&) = delete;

  const ACHAR* name() const { return name_.c_str(); }
  const ACHAR* parentName() const { return parentName_.c_str(); }
  AcRxClass* myParent() const { return parent_; }
  void setParent(AcRxClass* parent) { parent_ = parent; }
  bool isDerivedFrom(const AcRxClass* other) const;

 private:
  std::wstring name_;
  std::wstring parentName_;
  AcRxClass* parent_ = nullptr;
};

// Creates a class in the host's class dictionary; its parent is linked now if known, otherwise by
// acrxBuildClassHierarchy(). Answers the existing class when the name is taken.
ACRX_PORT AcRxClass* newAcRxClass(const ACHAR* className, const ACHAR* parentClassName);

// Links every class of the class dictionary to its parent by name.
ACRX_PORT void acrxBuildClassHierarchy();

// Removes a class and every class derived from it from the class dictionary and frees those made by
// newAcRxClass; the descriptions must not be used afterwards.
ACRX_PORT void deleteAcRxClassBranch(AcRxClass* cls);

#define ACRX_WIDE_NAME_(text) L##text
#define ACRX_WIDE_NAME(name) ACRX_WIDE_NAME_(#name)

// For a module class derived from PARENT: declare with ACRX_DECLARE_MEMBERS plus
// `static AcRxClass* gpDesc; static void rxInit();`, define with this macro.
#define ACRX_NO_CONS_DEFINE_MEMBERS(CLASS, PARENT)                                        \
  AcRxClass* CLASS::gpDesc = nullptr;                                                     \
  AcRxClass* CLASS::desc() { return gpDesc; }                                             \
  AcRxClass* CLASS::isA() const { return desc(); }                                        \
  void CLASS::rxInit() { gpDesc = newAcRxClass(ACRX_WIDE_NAME(CLASS), ACRX_WIDE_NAME(PARENT)); }
