// Replacing a file so that readers see either the old or the complete new content, never a half-written
// one: the new content goes into an unnamed file beside the target (a named temporary where the file
// system cannot make unnamed ones), is flushed to disk, and then takes the target's place by rename.
//
// No temporary outlives the host: an unnamed file vanishes with the process whatever ends it, and while a
// temporary has a name, SIGINT, SIGTERM, SIGHUP and SIGQUIT remove it before they end the host. A file-size
// limit makes the save fail (SIGXFSZ is ignored meanwhile) rather than end the host.
//
// A symbolic link is followed and its target replaced; the link stays. A target that is no regular file
// (a directory, a device, a FIFO) or that is read-only is refused, as is an empty name.
#pragma once

#include <filesystem>
#include <functional>
#include <string>

namespace dxf {

// `write` fills the open temporary file and returns 0 or the errno of its failure. On any failure the
// target is untouched, the temporary removed, and `error` says what went wrong.
bool replaceFileAtomically(const std::filesystem::path& target, const std::function<int(int fd)>& write,
                           std::string& error);

}  // namespace dxf
