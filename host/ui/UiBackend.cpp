#include "host/ui/UiBackend.h"

#include "host/headless/UiHeadless.h"

namespace host::ui {
namespace {

UiBackend* installed = nullptr;

}  // namespace

UiBackend& backend() { return installed != nullptr ? *installed : host::headless::HeadlessUi::instance(); }

void setBackend(UiBackend* backend) { installed = backend; }

}  // namespace host::ui
