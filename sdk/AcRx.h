// Run-time basics shared by the whole host interface: the application messages a module receives through
// acrxEntryPoint, its answers, and the visibility mark of everything the host library exports.
#pragma once

// Modules are built with hidden visibility; whatever they reach in the host library must be visible.
#define ACRX_PORT __attribute__((visibility("default")))

// A module instance: on this host the handle the dynamic loader gave the module file (dlopen), from which
// the module can find its own file and resources.
using HINSTANCE = void*;

// A command handler: no arguments, no result.
using AcRxFunctionPtr = void (*)();

namespace AcRx {

enum AppMsgCode {
  kNullMsg = 0,
  kInitAppMsg = 1,
  kUnloadAppMsg = 2,
  kLoadDwgMsg = 3,
  kUnloadDwgMsg = 4,
  kInvkSubrMsg = 5,
  kCfgMsg = 6,
  kEndMsg = 7,
  kQuitMsg = 8,
  kSaveMsg = 9,
  kDependencyMsg = 10,
  kNoDependencyMsg = 11,
  kOleUnloadAppMsg = 12,
  kPreQuitMsg = 13,
  kInitDialogMsg = 14,
  kEndDialogMsg = 15,
};

enum AppRetCode {
  kRetOK = 0,
  kRetError = 3,
};

}  // namespace AcRx
