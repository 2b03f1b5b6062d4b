#include "app/ViraResources.h"

namespace {

// Registers the resources while the module file is loaded; the registry only keeps the pointer.
class GermanResourceRegistration {
 public:
  GermanResourceRegistration() : module_(ViraMakeGermanResources()) { ui::registerResourceModule(&module_); }
  ~GermanResourceRegistration() { ui::unregisterResourceModule(&module_); }
  GermanResourceRegistration(const GermanResourceRegistration&) = delete;
  GermanResourceRegistration& operator=(const GermanResourceRegistration&) = delete;
  ui::ResourceHandle Handle() const { return &module_; }

 private:
  ui::ResourceModule module_;
};

GermanResourceRegistration gGermanResources;

}  // namespace

ui::ResourceHandle ViraGermanResources() { return gGermanResources.Handle(); }
