// Layers of the working drawing: the current one, whether a layer hides an entity, making a layer usable
// again, the module's own layers, and the names of layers and blocks.
#pragma once

#include "sdk/AcChar.h"
#include "sdk/AcCmColor.h"
#include "sdk/AcDbObjectId.h"
#include "sdk/AcadErrorStatus.h"

#include <string>
#include <vector>

class AcDbDatabase;
class AcDbEntity;

// The layers the module draws on, created on first use.
inline constexpr const ACHAR* kAcDbToolLayerName = L"TRELLANOVA_KoVira";
inline constexpr const ACHAR* kAcDbSuiteLayerName = L"TRELLANOVA_10";

// The name of the current layer (system variable CLAYER), empty when the host does not answer. The text
// lives in one buffer shared by all callers and is valid until the next call.
const ACHAR* AcDbGetCurrentLayerName();

// True when the entity's layer is frozen, off or locked. A locked layer is visible, but the commands skip
// what they could not change, so it counts as hiding. A null layer id or a layer that cannot be opened
// counts as not hiding (and leaves a debug log line).
bool AcDbIsFrozenOrInInvisibleLayer(const AcDbEntity* entity);

// Thaws, switches on and unlocks the layer, each only where needed. A failed open is reported on the
// command line and answered; otherwise the status of closing the layer.
Acad::ErrorStatus AcDbEnableAndSetLayerVisible(AcDbObjectId layerId);

// The id of the named layer, created (thawed, on, unlocked, with the colour and, when one is named, the
// linetype) and announced on the command line when the drawing lacks it. An empty name answers the null
// id without touching the drawing. `layerId` receives the answer as well.
AcDbObjectId AcDbGetOrCreateLayer(AcDbObjectId& layerId, AcDbDatabase* database, const ACHAR* layerName,
                                  const ACHAR* linetypeName, const AcCmColor& color);

// The module's two layers (linetype CONTINUOUS, colour 6), in the given drawing or, without one, in the
// working drawing reached through a temporary connector (which opens model space for writing, so a caller
// holding a connector of its own passes that connector's database).
AcDbObjectId AcDbGetToolLayer(AcDbObjectId& layerId, AcDbDatabase* database = nullptr);
AcDbObjectId AcDbGetSuiteLayer(AcDbObjectId& layerId, AcDbDatabase* database = nullptr);

// Append the names of the working drawing's layers, or of its block definitions that are not layouts,
// and answer the number of names in `names` afterwards. The block names go through a temporary connector
// and tell the user, as it does, when the drawing cannot be reached.
int AcDbGetLayerNames(std::vector<std::wstring>& names);
int AcDbGetBlockNames(std::vector<std::wstring>& names);
