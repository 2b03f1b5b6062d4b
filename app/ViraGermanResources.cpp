#include "app/ViraResources.h"

#include "app/ViraResourceIds.h"

#include <string>
#include <vector>

// The German texts are the product's own; the language libraries translate them text by text.
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

ui::DialogTemplate pickPointsDialog() {
  using ui::ControlKind;
  ui::DialogTemplate form;
  form.id = IDD_PICK_POINTS;
  form.title = L"Punkte erfassen";
  form.fontName = L"MS Sans Serif";
  form.fontSize = 8;
  form.rect = CRect(0, 0, 232, 206);
  form.controls = {
      {IDC_POINT_LIST, ControlKind::ListView, L"", LVS_REPORT | LVS_SHOWSELALWAYS | WS_BORDER | WS_TABSTOP,
       CRect(7, 7, 225, 158)},
      {IDC_STATIC, ControlKind::Static, L"Nächste Punktnummer:", 0, CRect(7, 167, 82, 175)},
      {IDC_NEXT_NUMBER, ControlKind::Edit, L"", ES_AUTOHSCROLL | WS_BORDER | WS_TABSTOP, CRect(84, 165, 150, 177)},
      {IDC_NEXT_NUMBER_SPIN, ControlKind::UpDown, L"", UDS_ARROWKEYS, CRect(150, 165, 160, 177)},
      {IDC_SAVE_POINTS, ControlKind::Button, L"Speichern als...", WS_TABSTOP, CRect(7, 185, 77, 199)},
      {IDOK, ControlKind::Button, L"OK", BS_DEFPUSHBUTTON | WS_TABSTOP, CRect(173, 185, 225, 199)},
  };
  return form;
}

// The context menu of every list: one pop-up with the five entries, the same texts as strings 3 to 7.
ui::MenuTemplate listMenu(int id, const std::vector<std::wstring>& texts) {
  ui::MenuTemplate menu;
  menu.id = id;
  std::vector<ui::MenuItem> entries;
  for (int k = 0; k < 5; ++k) entries.emplace_back(ID_LIST_SORT_ASCENDING + k, texts[static_cast<std::size_t>(k)]);
  menu.items = {ui::MenuItem(0, L"Liste", MF_STRING, entries)};
  return menu;
}

void addListResources(ui::ResourceModule& module) {
  const std::vector<std::wstring> german = {L"Spalte aufsteigend sortieren", L"Spalte absteigend sortieren",
                                            L"Microsoft Excel...", L"Drucken", L"Löschen"};
  const std::vector<std::wstring> english = {L"Sort Column ascending", L"Sort Column descending",
                                             L"Microsoft Excel...", L"Print", L"Delete"};
  module.menus[IDR_LIST_MENU_GERMAN] = listMenu(IDR_LIST_MENU_GERMAN, german);
  module.menus[IDR_LIST_MENU_OTHER] = listMenu(IDR_LIST_MENU_OTHER, english);
  for (int k = 0; k < 5; ++k) module.strings[ID_LIST_SORT_ASCENDING + k] = german[static_cast<std::size_t>(k)];
  // The closing double quote of the German text is part of the product's text.
  module.strings[IDS_LIST_OUTDATED_GERMAN] =
      L"Auf Ihrem System sind einige Systemdateien veraltet, TRELLANOVA benötigt aktuellere Versionen.\n"
      L"Um aktuellere Systemdateien zu erhalten, installieren Sie am besten den Microsoft Internet Explorer 5.x "
      L"oder höher.\n\nSie finden eine aktuelle Version des Internet Explorers auf der Halvern Installations CD.\n\n"
      L"Wenn Sie diese Meldung Ignorieren, versucht TRELLANOVA 10 weiterzulaufen. Vermutlich wird es aber "
      L"abstürzen.\"";
  module.strings[IDS_LIST_OUTDATED_OTHER] =
      L"On your system some system files became outdated, TRELLANOVA need more current versions.\n"
      L"In order to get more current system files, install the Microsoft Internet Explorer 5.x or higher.\n\n"
      L"You will find a current version of the Internet Explorer on the Halvern installation CD.\n\n"
      L"Wenn you IGNORE this message TRELLANOVA 10 will try to continue. But the chances are good that it will "
      L"crash.";
}

ui::DialogTemplate newVersionDialog() {
  using ui::ControlKind;
  ui::DialogTemplate form;
  form.id = IDD_NEW_VERSION;
  form.title = L"VIRA cadtools";
  form.rect = CRect(0, 0, 250, 84);
  form.controls = {
      {IDC_STATIC, ControlKind::Static,
       L"Eine aktuellere Version ist verfügbar. Klicken Sie auf den Link um diese herunterzuladen.", 0,
       CRect(7, 7, 243, 27)},
      {IDC_NEW_VERSION_LINK, ControlKind::Static, L"", SS_NOTIFY, CRect(7, 33, 243, 45)},
      {IDOK, ControlKind::Button, L"OK", BS_DEFPUSHBUTTON | WS_TABSTOP, CRect(96, 61, 154, 76)},
  };
  return form;
}

}  // namespace

ui::ResourceModule ViraMakeGermanResources() {
  ui::ResourceModule module;
  module.name = L"ViraCadtoolsV10 (Deutsch)";
  module.dialogs[IDD_MOVE_DRAWING] = moveDrawingDialog();
  module.dialogs[IDD_PICK_POINTS] = pickPointsDialog();
  module.dialogs[IDD_NEW_VERSION] = newVersionDialog();
  module.cursors[IDR_HAND_CURSOR] = ui::CursorShape::Hand;
  addListResources(module);
  // Status text and tooltip of each toolbar button, separated by a line break.
  module.strings[ID_VIRA_COORD_DEF] = L"Zeichnung transformieren\nZeichnung transformieren";
  module.strings[ID_VIRA_PT_PICK] = L"Punkte selektieren\nPunkte selektieren";
  module.toolbars[IDR_VIRA_TOOLBAR] = {IDR_VIRA_TOOLBAR, {ID_VIRA_COORD_DEF, ID_VIRA_PT_PICK}, ViraToolbarImages(),
                                       kViraToolbarImageSize};
  return module;
}
