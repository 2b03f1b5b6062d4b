// The registered commands, by group. Each command remembers the application that added it, so that the
// host can take away whatever a module left behind before its code is unmapped.
#pragma once

#include "sdk/AcEdCommandStack.h"

#include <memory>
#include <string>
#include <vector>

namespace host::runtime {

class Command : public AcEdCommand {
 public:
  Command(std::wstring group, std::wstring global, std::wstring local, int flags, AcRxFunctionPtr handler,
          AcEdUIContext* uiContext, int fcode, HINSTANCE resources, const void* owner)
      : group_(std::move(group)), global_(std::move(global)), local_(std::move(local)), flags_(flags),
        handler_(handler), uiContext_(uiContext), fcode_(fcode), resources_(resources), owner_(owner) {}

  AcRxFunctionPtr functionAddr() const override { return handler_; }
  const ACHAR* groupName() const override { return group_.c_str(); }
  const ACHAR* globalName() const override { return global_.c_str(); }
  const ACHAR* localName() const override { return local_.c_str(); }
  int commandFlags() const override { return flags_; }
  AcEdUIContext* UIContext() const override { return uiContext_; }
  int functionCode() const override { return fcode_; }
  HINSTANCE resourceHandle() const override { return resources_; }
  const void* owner() const { return owner_; }

 private:
  std::wstring group_, global_, local_;
  int flags_;
  AcRxFunctionPtr handler_;
  AcEdUIContext* uiContext_;
  int fcode_;
  HINSTANCE resources_;
  const void* owner_;
};

class CommandStack : public AcEdCommandStack {
 public:
  Acad::ErrorStatus addCommand(const ACHAR* cmdGroupName, const ACHAR* cmdGlobalName,
                               const ACHAR* cmdLocalName, int commandFlags, AcRxFunctionPtr functionAddr,
                               AcEdUIContext* UIContext = nullptr, int fcode = -1,
                               HINSTANCE hResourceHandle = nullptr,
                               AcEdCommand** cmdPtrRet = nullptr) override;
  Acad::ErrorStatus removeCmd(const ACHAR* cmdGroupName, const ACHAR* cmdGlobalName) override;
  Acad::ErrorStatus removeGroup(const ACHAR* groupName) override;
  AcEdCommand* lookupGlobalCmd(const ACHAR* globalName) const override;
  AcEdCommand* lookupLocalCmd(const ACHAR* localName) const override;
  AcEdCommand* lookupCmd(const ACHAR* typedName) const override;

  // Removes every command the application added; answers how many there were.
  int removeCommandsOf(const void* owner);
  // Every command, the most recently added group first.
  std::vector<const Command*> commands() const;

 private:
  struct Group {
    std::wstring name;
    std::vector<std::unique_ptr<Command>> commands;
  };
  Group* findGroup(std::wstring_view name);
  // The first command that matches, the most recently added group first.
  template <class Matches>
  AcEdCommand* find(Matches matches) const;
  void dropEmptyGroups();

  // The most recently created group first, as commands of a later module hide those of an earlier one.
  std::vector<Group> groups_;
};

CommandStack& commandStack();

}  // namespace host::runtime
