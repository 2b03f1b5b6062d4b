// "@dialog ID dump": the dialog as the user sees it, for transcripts. The format, one entry per line:
//
//   dialog 4001 "Punkte erfassen"                      the template id and the title (plus " hidden")
//   ID KIND "TEXT" FLAGS...                            one line per control, in tab order
//
// KIND is one of static, link (a label that opens its text when clicked), line (an etched line), group, edit,
// button, checkbox, updown, list, combo. FLAGS, in this order and only where they apply: "position N" (updown),
// "checked" (checkbox), "readonly" (edit), "disabled",
// "hidden". A control without an id shows -1. A list's text is its window text (usually ""); its line is
// followed, indented by two blanks, by
//
//   header "Name" "X" "Y" "Z"                          the column headings, plus " sorted COL ascending|descending"
//   row 0 "1" "10.000" "20.000" "0.000"                each row from 0: the cells as drawn, plus " selected"
//
// and then by controls placed over it (an in-place editor), indented by two blanks as well. A drop-down list's
// text is its chosen entry; its line is followed by "  entries "A" "B" ..." with all its entries. Texts are
// quoted as they stand, with line breaks written as \n.
#pragma once

#include <string>

#include "sdk/ui/CDialog.h"

namespace host::headless {

std::string dumpDialog(CDialog& dialog);

}  // namespace host::headless
