// Result buffers and strings that cross between the host and modules. Strings are allocated with malloc
// so that modules may free them with free() as well as with acutDelString.
#include "sdk/AcEd.h"

#include <cstdlib>
#include <cwchar>
#include <new>

resbuf* acutNewRb(int type) {
  auto* rb = new (std::nothrow) resbuf;
  if (rb) rb->restype = static_cast<short>(type);
  return rb;
}

int acutRelRb(resbuf* chain) {
  while (chain) {
    resbuf* next = chain->rbnext;
    if (chain->restype == RTSTR) std::free(chain->resval.rstring);
    delete chain;
    chain = next;
  }
  return RTNORM;
}

ACHAR* acutNewString(const ACHAR* text) {
  if (!text) text = L"";
  std::size_t n = std::wcslen(text) + 1;
  auto* copy = static_cast<ACHAR*>(std::malloc(n * sizeof(ACHAR)));
  if (copy) std::wmemcpy(copy, text, n);
  return copy;
}

void acutDelString(ACHAR*& text) {
  std::free(text);
  text = nullptr;
}
