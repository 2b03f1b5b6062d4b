// The LISP functions modules define for the current drawing. A call runs the registered function
// directly, or asks the owning module to run it with the invoke message and the function code.
#pragma once

#include <string>
#include <vector>

namespace host::runtime {

class LispFunctions {
 public:
  using Direct = int (*)();

  bool define(const std::wstring& name, int code, const void* owner);
  bool undefine(const std::wstring& name, int code);
  bool registerDirect(Direct function, int code, const void* owner);
  // Removes every function of the owner; answers how many there were.
  int removeOwner(const void* owner);

  // Runs a function by name; false when no function has that name.
  bool invoke(const std::wstring& name);
  // The code of the function being invoked, -1 outside an invocation.
  int currentCode() const { return current_; }
  bool has(const std::wstring& name) const;

 private:
  struct Function {
    std::wstring name;
    int code;
    const void* owner;
  };
  struct Registered {
    Direct function;
    int code;
    const void* owner;
  };
  std::vector<Function> functions_;
  std::vector<Registered> direct_;
  int current_ = -1;
};

LispFunctions& lispFunctions();

}  // namespace host::runtime
