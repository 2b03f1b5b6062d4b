// The host's command-line transcript: everything the user would read on the command line, alerts,
// message boxes and file dialogs with their answers. Headless runs write it to stdout.
#pragma once

#include <string_view>

namespace host {

// Appends UTF-8 text to the transcript as it stands (line breaks included).
void transcriptWrite(std::string_view utf8);

}  // namespace host
