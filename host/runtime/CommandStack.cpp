#include "host/runtime/CommandStack.h"

#include "host/WideText.h"
#include "host/runtime/ModuleLoader.h"

#include <algorithm>

namespace host::runtime {
namespace {

std::wstring_view withoutUnderscore(std::wstring_view name) {
  if (!name.empty() && name.front() == L'_') name.remove_prefix(1);
  return name;
}

bool isBlank(const ACHAR* text) { return !text || !*text; }

}  // namespace

CommandStack::Group* CommandStack::findGroup(std::wstring_view name) {
  for (Group& g : groups_)
    if (equalsNoCase(g.name, name)) return &g;
  return nullptr;
}

Acad::ErrorStatus CommandStack::addCommand(const ACHAR* cmdGroupName, const ACHAR* cmdGlobalName,
                                           const ACHAR* cmdLocalName, int commandFlags,
                                           AcRxFunctionPtr functionAddr, AcEdUIContext* UIContext, int fcode,
                                           HINSTANCE hResourceHandle, AcEdCommand** cmdPtrRet) {
  if (cmdPtrRet) *cmdPtrRet = nullptr;
  if (isBlank(cmdGroupName) || isBlank(cmdGlobalName) || !functionAddr) return Acad::eInvalidInput;
  // A command without a local name is known by its global name in every language.
  const ACHAR* local = isBlank(cmdLocalName) ? cmdGlobalName : cmdLocalName;
  Group* group = findGroup(cmdGroupName);
  if (group) {
    for (const auto& c : group->commands)
      if (equalsNoCase(c->globalName(), cmdGlobalName) || equalsNoCase(c->localName(), local))
        return Acad::eDuplicateKey;
  } else {
    groups_.insert(groups_.begin(), Group{cmdGroupName, {}});
    group = &groups_.front();
  }
  group->commands.push_back(std::make_unique<Command>(cmdGroupName, cmdGlobalName, local, commandFlags,
                                                      functionAddr, UIContext, fcode, hResourceHandle,
                                                      currentApplication()));
  if (cmdPtrRet) *cmdPtrRet = group->commands.back().get();
  return Acad::eOk;
}

Acad::ErrorStatus CommandStack::removeCmd(const ACHAR* cmdGroupName, const ACHAR* cmdGlobalName) {
  if (isBlank(cmdGroupName) || isBlank(cmdGlobalName)) return Acad::eInvalidInput;
  Group* group = findGroup(cmdGroupName);
  if (!group) return Acad::eKeyNotFound;
  auto& cmds = group->commands;
  auto it = std::find_if(cmds.begin(), cmds.end(),
                         [&](const auto& c) { return equalsNoCase(c->globalName(), cmdGlobalName); });
  if (it == cmds.end()) return Acad::eKeyNotFound;
  cmds.erase(it);
  dropEmptyGroups();
  return Acad::eOk;
}

Acad::ErrorStatus CommandStack::removeGroup(const ACHAR* groupName) {
  if (isBlank(groupName)) return Acad::eInvalidInput;
  Group* group = findGroup(groupName);
  if (!group) return Acad::eKeyNotFound;
  group->commands.clear();
  dropEmptyGroups();
  return Acad::eOk;
}

int CommandStack::removeCommandsOf(const void* owner) {
  int removed = 0;
  for (Group& g : groups_)
    removed += static_cast<int>(
        std::erase_if(g.commands, [owner](const auto& c) { return c->owner() == owner; }));
  dropEmptyGroups();
  return removed;
}

void CommandStack::dropEmptyGroups() {
  std::erase_if(groups_, [](const Group& g) { return g.commands.empty(); });
}

template <class Matches>
AcEdCommand* CommandStack::find(Matches matches) const {
  for (const Group& g : groups_)
    for (const auto& c : g.commands)
      if (matches(*c)) return c.get();
  return nullptr;
}

AcEdCommand* CommandStack::lookupGlobalCmd(const ACHAR* globalName) const {
  if (isBlank(globalName)) return nullptr;
  return find([&](const Command& c) { return equalsNoCase(c.globalName(), globalName); });
}

AcEdCommand* CommandStack::lookupLocalCmd(const ACHAR* localName) const {
  if (isBlank(localName)) return nullptr;
  return find([&](const Command& c) { return equalsNoCase(c.localName(), localName); });
}

AcEdCommand* CommandStack::lookupCmd(const ACHAR* typedName) const {
  if (isBlank(typedName)) return nullptr;
  std::wstring_view typed = typedName;
  bool globalOnly = typed.front() == L'_';
  if (!globalOnly)
    if (AcEdCommand* c = lookupLocalCmd(typedName)) return c;
  // Global names are compared without their leading "_": modules register "_Name" as well as "Name".
  std::wstring_view wanted = withoutUnderscore(typed);
  if (wanted.empty()) return nullptr;
  return find([&](const Command& c) { return equalsNoCase(withoutUnderscore(c.globalName()), wanted); });
}

std::vector<const Command*> CommandStack::commands() const {
  std::vector<const Command*> all;
  for (const Group& g : groups_)
    for (const auto& c : g.commands) all.push_back(c.get());
  return all;
}

CommandStack& commandStack() {
  static CommandStack* stack = new CommandStack;
  return *stack;
}

}  // namespace host::runtime
