// The host's system registry: a dictionary of named service objects (the dynamic linker, the command
// stack, the class dictionary) that modules look up by key.
#pragma once

#include "sdk/AcChar.h"
#include "sdk/AcRxObject.h"

#define ACRX_DYNAMIC_LINKER L"DynamicLinker"
#define ACRX_CLASS_DICTIONARY L"ClassDictionary"

class ACRX_PORT AcRxDictionary : public AcRxObject {
 public:
  ACRX_DECLARE_MEMBERS(AcRxDictionary)

  // Null when the key is not there.
  virtual AcRxObject* at(const ACHAR* key) const = 0;
  // Stores the object under the key and answers the one it replaced (or null); the caller owns both.
  virtual AcRxObject* atPut(const ACHAR* key, AcRxObject* object) = 0;
  // Takes the entry out and answers its object (or null).
  virtual AcRxObject* remove(const ACHAR* key) = 0;
  virtual bool has(const ACHAR* key) const = 0;
  virtual unsigned int numEntries() const = 0;
};

ACRX_PORT AcRxDictionary* acrxSysRegistry();

// Loads and unloads modules and keeps each loaded application's flags: an application stays locked
// (cannot be unloaded on request) until it unlocks itself, and says whether it copes with several
// drawings. appId is the packet pointer of the initialise-application message.
class ACRX_PORT AcRxDynamicLinker : public AcRxObject {
 public:
  ACRX_DECLARE_MEMBERS(AcRxDynamicLinker)

  virtual bool loadModule(const ACHAR* fileName, bool printIt) = 0;
  virtual bool unloadModule(const ACHAR* fileName, bool printIt) = 0;
  virtual bool lockApplication(void* appId) const = 0;
  virtual bool unlockApplication(void* appId) const = 0;
  virtual bool isApplicationLocked(const ACHAR* fileName) const = 0;
  virtual bool registerAppMDIAware(void* appId) const = 0;
  virtual bool registerAppNotMDIAware(void* appId) const = 0;
};
