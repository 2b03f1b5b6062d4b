// The headless front end: a script acts as the user. Its lines are typed at the command line and its
// prompts, or act on dialogs (handed to the user-interface script), or open and save drawings.
#pragma once

#include "host/headless/ScriptInput.h"

#include <istream>
#include <string>
#include <vector>

namespace host::headless {

class ScriptRunner {
 public:
  // `name` names the script in messages ("stdin" for standard input).
  ScriptRunner(std::vector<std::string> lines, std::string name);
  // Reads the stream line by line as the run needs them, so that a person can type at a terminal.
  ScriptRunner(std::istream& stream, std::string name);

  // Runs the command line until the script ends. A line that cannot be carried out stops the run: false,
  // with `error` naming the script, the line and the reason.
  bool run(std::string& error);

  // The next line for whoever waits for the user (see pullScriptLine).
  ScriptLine next();

  // The runner whose script is running, null outside run().
  static ScriptRunner* active();

 private:
  void openDrawing(const std::string& path);
  void saveDrawing(const std::string& path);
  bool fetch(std::string& line);

  std::vector<std::string> lines_;
  std::istream* stream_ = nullptr;
  std::string name_;
  std::size_t lineNumber_ = 0;
};

// Opens another drawing as the user does between commands: the modules are told that the drawing goes and
// that one comes. On failure (`error` set) the drawing open before stays, and the modules get it back.
bool switchDrawing(const std::string& path, std::string& error);

// Told after an "@open" line opened a drawing or an "@save" line saved it to its own file (the window keeps
// track of the changes that are not saved); null for none.
void setDrawingFiledHandler(void (*handler)());

// Reads a script's lines; false when the stream fails before its end.
bool readScriptLines(std::istream& in, std::vector<std::string>& lines);

}  // namespace host::headless
