#include "host/headless/ScriptInput.h"

#include "host/headless/ScriptRunner.h"

namespace host::headless {

ScriptLine pullScriptLine() {
  ScriptRunner* runner = ScriptRunner::active();
  return runner ? runner->next() : ScriptLine{};
}

}  // namespace host::headless
