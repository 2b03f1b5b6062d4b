#include "support/KoModuleLifetime.h"

#include <dlfcn.h>

bool KoKeepModuleLoaded(const void* address)
{
    Dl_info info{};
    if (::dladdr(address, &info) == 0 || info.dli_fname == nullptr)
        return false;
    // A second reference that is never given back, marked so that no dlclose can unmap the file.
    return ::dlopen(info.dli_fname, RTLD_NOW | RTLD_NOLOAD | RTLD_NODELETE) != nullptr;
}
