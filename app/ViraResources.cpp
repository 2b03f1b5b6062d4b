#include "app/ViraResources.h"

#include "app/ViraResourceIds.h"
#include "app/ViraResourceScope.h"

namespace {

ui::DialogTemplate moveDrawingDialog() {
  using ui::ControlKind;
  ui::DialogTemplate form;
  form.id = IDD_MOVE_DRAWING;
  form.title = L"Ganze Zeichnung verschieben und drehen";
  form.fontName = L"MS Sans Serif";
  form.fontSize = 8;
  form.rect = CRect(0, 0, 300, 182);
  constexpr unsigned kActual = ES_AUTOHSCROLL | ES_READONLY | WS_BORDER | WS_TABSTOP;
  constexpr unsigned kTarget = ES_AUTOHSCROLL | WS_BORDER | WS_TABSTOP;
  constexpr unsigned kBox = BS_AUTOCHECKBOX | WS_TABSTOP;
  form.controls = {
      // The blanks of both texts are the product's own and stay as they are.
      {IDC_STATIC, ControlKind::Static,
       L"Picken Sie Punkte in der Zeichnung und  geben Sie die Koordinaten ein wohin diese Punkte "
       L"transformiert werden sollen. ",
       0, CRect(7, 7, 293, 27)},
      {IDC_STATIC, ControlKind::Static, L"Ist-Kooridnaten Zeichnungspunkt", 0, CRect(20, 31, 152, 39)},
      {IDC_STATIC, ControlKind::Static, L"Soll- Koordinaten", 0, CRect(158, 31, 293, 39)},
      {IDC_PAIR_1, ControlKind::CheckBox, L"", kBox, CRect(7, 43, 17, 55)},
      {IDC_ACTUAL_1, ControlKind::Edit, L"", kActual, CRect(20, 43, 152, 55)},
      {IDC_TARGET_1, ControlKind::Edit, L"", kTarget, CRect(158, 43, 293, 55)},
      {IDC_PAIR_2, ControlKind::CheckBox, L"", kBox, CRect(7, 59, 17, 71)},
      {IDC_ACTUAL_2, ControlKind::Edit, L"", kActual, CRect(20, 59, 152, 71)},
      {IDC_TARGET_2, ControlKind::Edit, L"", kTarget, CRect(158, 59, 293, 71)},
      {IDC_PAIR_3, ControlKind::CheckBox, L"", kBox, CRect(7, 75, 17, 87)},
      {IDC_ACTUAL_3, ControlKind::Edit, L"", kActual, CRect(20, 75, 152, 87)},
      {IDC_TARGET_3, ControlKind::Edit, L"", kTarget, CRect(158, 75, 293, 87)},
      {IDC_SCALE, ControlKind::CheckBox, L"Zeichnung skalieren falls Sollkoordinaten  einen Maßstabsfaktor ergeben.",
       kBox, CRect(7, 92, 293, 102)},
      {IDC_STATIC, ControlKind::Static, L"", SS_ETCHEDHORZ, CRect(7, 106, 293, 107)},
      {IDC_STATIC, ControlKind::Static, L"Transformation die durchgeführt werden wird:", 0, CRect(7, 111, 293, 119)},
      {IDC_PREVIEW, ControlKind::Static, L"", 0, CRect(7, 122, 293, 154)},
      {IDCANCEL, ControlKind::Button, L"Abbrechen", WS_TABSTOP, CRect(183, 161, 235, 175)},
      {IDOK, ControlKind::Button, L"OK", BS_DEFPUSHBUTTON | WS_TABSTOP, CRect(241, 161, 293, 175)},
  };
  return form;
}

ui::ResourceModule makeGermanResources() {
  ui::ResourceModule module;
  module.name = L"ViraCadtoolsV10 (Deutsch)";
  module.dialogs[IDD_MOVE_DRAWING] = moveDrawingDialog();
  return module;
}

// Registers the resources while the module file is loaded; the registry only keeps the pointer.
class GermanResourceRegistration {
 public:
  GermanResourceRegistration() : module_(makeGermanResources()) { ui::registerResourceModule(&module_); }
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

ui::ResourceHandle ViraLanguageResources() { return ViraGermanResources(); }
