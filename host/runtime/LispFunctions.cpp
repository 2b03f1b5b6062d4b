#include "host/runtime/LispFunctions.h"

#include "host/WideText.h"
#include "host/runtime/ModuleLoader.h"
#include "sdk/AcEd.h"

#include <algorithm>

namespace host::runtime {

bool LispFunctions::define(const std::wstring& name, int code, const void* owner) {
  if (name.empty() || code < 0) return false;
  // A later definition of the same name replaces the earlier one, as in the LISP environment.
  std::erase_if(functions_, [&](const Function& f) { return equalsNoCase(f.name, name); });
  functions_.push_back({name, code, owner});
  return true;
}

bool LispFunctions::undefine(const std::wstring& name, int code) {
  return std::erase_if(functions_, [&](const Function& f) {
           return f.code == code && equalsNoCase(f.name, name);
         }) != 0;
}

bool LispFunctions::registerDirect(Direct function, int code, const void* owner) {
  if (!function || code < 0) return false;
  std::erase_if(direct_, [&](const Registered& r) { return r.code == code && r.owner == owner; });
  direct_.push_back({function, code, owner});
  return true;
}

int LispFunctions::removeOwner(const void* owner) {
  std::erase_if(direct_, [owner](const Registered& r) { return r.owner == owner; });
  return static_cast<int>(std::erase_if(functions_, [owner](const Function& f) { return f.owner == owner; }));
}

bool LispFunctions::has(const std::wstring& name) const {
  return std::any_of(functions_.begin(), functions_.end(),
                     [&](const Function& f) { return equalsNoCase(f.name, name); });
}

bool LispFunctions::invoke(const std::wstring& name) {
  auto it = std::find_if(functions_.begin(), functions_.end(),
                         [&](const Function& f) { return equalsNoCase(f.name, name); });
  if (it == functions_.end()) return false;
  Function f = *it;
  int previous = current_;
  current_ = f.code;
  auto direct = std::find_if(direct_.begin(), direct_.end(),
                             [&](const Registered& r) { return r.code == f.code && r.owner == f.owner; });
  if (direct != direct_.end()) {
    ApplicationScope scope(f.owner);
    direct->function();
  } else if (LoadedModule* m = findModule(f.owner)) {
    sendAppMessage(m, AcRx::kInvkSubrMsg, nullptr);
  }
  current_ = previous;
  return true;
}

LispFunctions& lispFunctions() {
  static LispFunctions* functions = new LispFunctions;
  return *functions;
}

}  // namespace host::runtime

int acedDefun(const ACHAR* name, int functionCode) {
  auto& table = host::runtime::lispFunctions();
  return name && table.define(name, functionCode, host::runtime::currentApplication()) ? RTNORM : RTERROR;
}

int acedUndef(const ACHAR* name, int functionCode) {
  return name && host::runtime::lispFunctions().undefine(name, functionCode) ? RTNORM : RTERROR;
}

int acedRegFunc(int (*function)(), int functionCode) {
  auto& table = host::runtime::lispFunctions();
  return table.registerDirect(function, functionCode, host::runtime::currentApplication()) ? RTNORM : RTERROR;
}

int acedGetFunCode() { return host::runtime::lispFunctions().currentCode(); }
