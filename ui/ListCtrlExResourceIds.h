// Resources that every extended list brings along: its context menus, whose entries are also string
// resources, and the two texts of the outdated list-control message. The module's resource file and every
// language library carry them under these ids.
#pragma once

// The context menu of a list: German, and every other language.
inline constexpr int IDR_LIST_MENU_GERMAN = 4002;
inline constexpr int IDR_LIST_MENU_OTHER = 4003;

// Entries of both menus; the string resources of the same ids hold the same texts.
inline constexpr int ID_LIST_SORT_ASCENDING = 3;
inline constexpr int ID_LIST_SORT_DESCENDING = 4;
inline constexpr int ID_LIST_SPREADSHEET = 5;
inline constexpr int ID_LIST_PRINT = 6;
inline constexpr int ID_LIST_DELETE = 7;

// "Some system files are outdated": German, and every other language.
inline constexpr int IDS_LIST_OUTDATED_GERMAN = 1;
inline constexpr int IDS_LIST_OUTDATED_OTHER = 2;
