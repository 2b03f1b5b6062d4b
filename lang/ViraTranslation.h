// How a language library is made: it starts from the module's own German resources (the same dialogs,
// controls, menus, strings and toolbar, with the same ids and layout) and replaces every text by its
// translation from the library's table. A text the table lacks stays German, so a new dialog of the module
// shows up in a language library at once and untranslated texts are easy to find (the language tests list
// them).
#pragma once

#include <span>

#include "sdk/ui/Resources.h"

struct ViraTranslation {
  const wchar_t* source;  // the module's text as it stands (German; English for menu 4003)
  const wchar_t* text;    // what the user of this language reads instead
};

// The module's resources with every text found in `table` replaced. A string of several lines ("status
// text\ntooltip") that the table lacks as a whole is translated line by line.
ui::ResourceModule ViraTranslateResources(std::span<const ViraTranslation> table, const wchar_t* libraryName);

// The resources a language library hands the dialog framework, made on first use.
#define VIRA_LANGUAGE_LIBRARY(table, libraryName)                                                         \
  extern "C" __attribute__((visibility("default"))) const ui::ResourceModule* UiResourceModule() {        \
    static const ui::ResourceModule resources = ViraTranslateResources(table, libraryName);               \
    return &resources;                                                                                    \
  }
