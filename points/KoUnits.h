#pragma once
// Length units. The index is what drawings and settings store, so the order is fixed for good:
// 0 none, 1 mm, 2 cm, 3 m, 4 µm, 5 ft, 6 in. Any other index is shown as "??" with factor 1.0.

#include "support/KoArray.h"
#include "support/KoString.h"

#include <utility>

enum : int { kKoUnitNone = 0, kKoUnitMM, kKoUnitCM, kKoUnitM, kKoUnitUM, kKoUnitFT, kKoUnitIN, kKoUnitCount };

// UTF-8 name ("µm" is two bytes); the bracketed form is "[mm]" etc. Index 0 gives "" in both forms.
const char* KoUnitName(int index, bool bracketed = false);
const wchar_t* KoUnitNameW(int index, bool bracketed = false);
// Metres per unit.
double KoUnitFactor(int index);
// A length given in metres, expressed in the unit (and back).
double KoMetresToUnit(double metres, int index);
double KoUnitToMetres(double value, int index);

// A unit index with its text, for lists of choices.
struct KoUnitPair {
    KoUnitPair() = default;
    KoUnitPair(int index, String text) : index(index), text(std::move(text)) {}
    explicit KoUnitPair(int index) : index(index), text(KoUnitName(index)) {}

    int index = 0;
    String text;
};

using KoUnitArray = TKoArray<KoUnitPair>;
