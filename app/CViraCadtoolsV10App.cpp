#include "app/CViraCadtoolsV10App.h"

#include "app/CDrxModule.h"
#include "app/ViraLanguage.h"
#include "app/ViraLogging.h"

AcRx::AppRetCode CViraCadtoolsV10App::On_kInitAppMsg(void* packet) {
  const AcRx::AppRetCode result = AcRxArxApp::On_kInitAppMsg(packet);
  ViraStartLogging();
  // The user's language first, so that the toolbar and every dialog come in it.
  ViraLoadStoredLanguage(ViraModulePath());
  // The update check runs on its own thread and is never waited for; a failure to start it is ignored.
  ViraStartUpdateCheck();
  ViraCreateToolbar();
  return result;
}

AcRx::AppRetCode CViraCadtoolsV10App::On_kUnloadAppMsg(void* packet) {
  const AcRx::AppRetCode result = AcRxArxApp::On_kUnloadAppMsg(packet);
  ViraDestroyToolbar();
  ViraStopLogging();
  return result;
}


AcRxDbxApp& ViraApplication() {
  // Made when the module file is loaded (a static object), before the host sends any message.
  static CViraCadtoolsV10App application;
  return application;
}

namespace {
// Constructs the application object while the module's statics are constructed.
[[maybe_unused]] AcRxDbxApp& gApplication = ViraApplication();
}  // namespace
