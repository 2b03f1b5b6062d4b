// A module file is looked at before the dynamic linker maps it: a file cut short (a copy that did not
// finish, a full disk) would be mapped all the same, and the first touch of a page beyond its end kills
// the host with SIGBUS. Here it is refused with a message instead.
#pragma once

#include <filesystem>
#include <string>

namespace host::runtime {

// Empty when the file is a complete shared object for this machine: an ELF header of this machine's
// class and byte order, a shared object, and every program header, loaded segment, section header and
// section with file contents lying within the file. Otherwise the reason ("is cut short: ...").
std::string checkSharedObject(const std::filesystem::path& file);

}  // namespace host::runtime
