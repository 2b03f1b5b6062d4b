#pragma once
// The table format a record list carries: which fields, in column order, and the unit of each.

#include "points/KoUnits.h"
#include "support/KoArray.h"

template <class E>
class TKoFormatTable {
public:
    TKoArray<E>& FieldMask() { return m_fieldMask; }
    const TKoArray<E>& FieldMask() const { return m_fieldMask; }
    KoUnitArray& Units() { return m_units; }
    const KoUnitArray& Units() const { return m_units; }

private:
    // Declared in this order so that destruction releases the unit pairs before the field mask.
    TKoArray<E> m_fieldMask;
    KoUnitArray m_units;
};
