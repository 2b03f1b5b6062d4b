// Small helpers over the host interface for the database tests.
#pragma once

#include "sdk/AcDbDatabase.h"
#include "sdk/AcDbEntity.h"
#include "sdk/AcDbSymbolTables.h"

#include <string>
#include <vector>

// The ids model space yields, in order, erased entities included or not.
std::vector<AcDbObjectId> modelSpaceIds(AcDbDatabase* db, bool skipDeleted = true);

// The first model space entity on the layer (null id when none).
AcDbObjectId firstOnLayer(AcDbDatabase* db, const std::wstring& layer);

AcDbObjectId layerId(AcDbDatabase* db, const ACHAR* name);
