// Ids of the module's own (German) resources. Language libraries use the same ids.
#pragma once

// The context menus and strings of the lists (4002, 4003, strings 1 to 7).
#include "ui/ListCtrlExResourceIds.h"

// The drawing transformation dialog and its controls.
inline constexpr int IDD_MOVE_DRAWING = 4000;
inline constexpr int IDC_ACTUAL_1 = 4005;
inline constexpr int IDC_TARGET_1 = 4006;
inline constexpr int IDC_ACTUAL_2 = 4007;
inline constexpr int IDC_TARGET_2 = 4008;
inline constexpr int IDC_ACTUAL_3 = 4009;
inline constexpr int IDC_TARGET_3 = 4010;
inline constexpr int IDC_PAIR_1 = 4011;
inline constexpr int IDC_PAIR_2 = 4012;
inline constexpr int IDC_PAIR_3 = 4013;
inline constexpr int IDC_PREVIEW = 4014;
inline constexpr int IDC_SCALE = 4015;

// The point capture dialog and its controls.
inline constexpr int IDD_PICK_POINTS = 4001;
inline constexpr int IDC_POINT_LIST = 4000;
inline constexpr int IDC_NEXT_NUMBER = 4001;
inline constexpr int IDC_SAVE_POINTS = 4002;
inline constexpr int IDC_NEXT_NUMBER_SPIN = 4004;

// The toolbar (button images and command list) and its two commands, whose tooltips are strings of the
// same ids.
inline constexpr int IDR_VIRA_TOOLBAR = 4008;
inline constexpr int ID_VIRA_COORD_DEF = 40001;
inline constexpr int ID_VIRA_PT_PICK = 40002;

// The notice of a newer version: its dialog, the link control and the hand cursor over the link.
inline constexpr int IDD_NEW_VERSION = 4007;
inline constexpr int IDC_NEW_VERSION_LINK = 4020;
inline constexpr int IDR_HAND_CURSOR = 4006;
