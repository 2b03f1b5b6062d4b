#include "app/ViraResources.h"

#include "app/ViraLanguage.h"
#include "ui/CListCtrlEx.h"

namespace {

// Registers the resources while the module file is loaded; the registry only keeps the pointer.
class GermanResourceRegistration {
 public:
  GermanResourceRegistration() : module_(ViraMakeGermanResources()) {
    ui::registerResourceModule(&module_);
    // The lists speak German unless a language library was loaded, and take their menus and strings from it.
    CListCtrlEx::SetLanguage([] { return ViraLanguageLibrary() == nullptr; },
                             [] { return ViraLanguageLibrary() != nullptr ? ViraLanguageLibrary() : ViraGermanResources(); });
  }
  ~GermanResourceRegistration() {
    CListCtrlEx::SetLanguage(nullptr, nullptr);
    ui::unregisterResourceModule(&module_);
  }
  GermanResourceRegistration(const GermanResourceRegistration&) = delete;
  GermanResourceRegistration& operator=(const GermanResourceRegistration&) = delete;
  ui::ResourceHandle Handle() const { return &module_; }

 private:
  ui::ResourceModule module_;
};

GermanResourceRegistration gGermanResources;

}  // namespace

ui::ResourceHandle ViraGermanResources() { return gGermanResources.Handle(); }
