#include "cad/AcDbLayers.h"

#include "cad/AcDbConnector.h"
#include "cad/AcDbDebugLog.h"
#include "cad/AcDbErrorReport.h"
#include "sdk/AcDbDatabase.h"
#include "sdk/AcDbEntity.h"
#include "sdk/AcDbHostApplicationServices.h"
#include "sdk/AcDbOpen.h"
#include "sdk/AcDbSymbolTables.h"
#include "sdk/AcEd.h"

#include <memory>

namespace {

constexpr Adesk::UInt16 kModuleLayerColorIndex = 6;
constexpr const ACHAR* kModuleLayerLinetype = L"CONTINUOUS";

// The linetype's id, or the null id when the drawing lacks it (the layer keeps its default then).
AcDbObjectId findLinetype(AcDbDatabase* database, const ACHAR* linetypeName) {
  AcDbObjectId linetypeId;
  AcDbLinetypeTable* linetypes = nullptr;
  if (AcDbReportError(database->getLinetypeTable(linetypes, AcDb::kForRead), L"AcDbGetOrCreateLayer") !=
      Acad::eOk)
    return linetypeId;
  AcDbReportError(linetypes->getAt(linetypeName, linetypeId), linetypeName);
  linetypes->close();
  return linetypeId;
}

// Makes the layer record and adds it; answers its id (null when the table refused it).
AcDbObjectId addLayer(AcDbLayerTable* layers, AcDbDatabase* database, const ACHAR* layerName,
                      const ACHAR* linetypeName, const AcCmColor& color) {
  auto* record = new AcDbLayerTableRecord;
  AcDbObjectId layerId;
  Acad::ErrorStatus es = record->setName(layerName);
  if (es == Acad::eOk) {
    record->setIsFrozen(false);
    record->setIsLocked(false);
    record->setIsOff(false);
    record->setVPDFLT(false);
    record->setColor(color);
    if (linetypeName != nullptr && *linetypeName != 0) {
      AcDbObjectId linetypeId = findLinetype(database, linetypeName);
      if (!linetypeId.isNull()) record->setLinetypeObjectId(linetypeId);
    }
    es = layers->add(layerId, record);
  }
  AcDbReportError(es, layerName);
  // Added: closing ends the write. Refused: the record belongs to no drawing and closing frees it.
  record->close();
  return layerId;
}

AcDbObjectId getModuleLayer(AcDbObjectId& layerId, AcDbDatabase* database, const ACHAR* layerName) {
  AcCmColor color;
  color.setColorIndex(kModuleLayerColorIndex);
  if (database != nullptr)
    return AcDbGetOrCreateLayer(layerId, database, layerName, kModuleLayerLinetype, color);
  AcDbConnector connector;
  layerId.setNull();
  if (!connector.IsConnected()) return layerId;
  return AcDbGetOrCreateLayer(layerId, connector.Database(), layerName, kModuleLayerLinetype, color);
}

AcDbDatabase* workingDatabase() {
  AcDbHostApplicationServices* services = acdbHostApplicationServices();
  return services != nullptr ? services->workingDatabase() : nullptr;
}

}  // namespace

const ACHAR* AcDbGetCurrentLayerName() {
  static std::wstring buffer;
  buffer.clear();
  resbuf value;
  if (acedGetVar(L"CLAYER", &value) == RTNORM && value.restype == RTSTR) {
    if (value.resval.rstring != nullptr) buffer = value.resval.rstring;
    acutDelString(value.resval.rstring);
  }
  return buffer.c_str();
}

bool AcDbIsFrozenOrInInvisibleLayer(const AcDbEntity* entity) {
  AcDbObjectId layerId = entity != nullptr ? entity->layerId() : AcDbObjectId::kNull;
  if (layerId.isNull()) {
    AcDbDebugLog(kAcDbDebugLogLevel, "AcDbIsFrozenOrInInvisibleLayer: LayerId NULL");
    return false;
  }
  AcDbLayerTableRecord* layer = nullptr;
  if (acdbOpenObject(layer, layerId, AcDb::kForRead) != Acad::eOk) {
    AcDbDebugLog(kAcDbDebugLogLevel, "AcDbIsFrozenOrInInvisibleLayer: acdbOpenAcDbObject failed");
    return false;
  }
  bool hiding = layer->isFrozen() || layer->isOff() || layer->isLocked();
  layer->close();
  return hiding;
}

Acad::ErrorStatus AcDbEnableAndSetLayerVisible(AcDbObjectId layerId) {
  AcDbLayerTableRecord* layer = nullptr;
  Acad::ErrorStatus es = AcDbReportError(acdbOpenObject(layer, layerId, AcDb::kForWrite),
                                         L"AcDbEnableAndSetLayerVisible");
  if (es != Acad::eOk) return es;
  if (layer->isFrozen()) layer->setIsFrozen(false);
  if (layer->isOff()) layer->setIsOff(false);
  if (layer->isLocked()) layer->setIsLocked(false);
  return layer->close();
}

AcDbObjectId AcDbGetOrCreateLayer(AcDbObjectId& layerId, AcDbDatabase* database, const ACHAR* layerName,
                                  const ACHAR* linetypeName, const AcCmColor& color) {
  layerId.setNull();
  if (layerName == nullptr || *layerName == 0 || database == nullptr) return layerId;
  AcDbLayerTable* layers = nullptr;
  if (AcDbReportError(database->getLayerTable(layers, AcDb::kForWrite), L"AcDbGetOrCreateLayer") != Acad::eOk)
    return layerId;
  if (layers->has(layerName)) {
    layers->getAt(layerName, layerId);
  } else {
    acutPrintf(L"TRELLANOVA: Create Layer: %s\n", layerName);
    layerId = addLayer(layers, database, layerName, linetypeName, color);
  }
  layers->close();
  return layerId;
}

AcDbObjectId AcDbGetToolLayer(AcDbObjectId& layerId, AcDbDatabase* database) {
  return getModuleLayer(layerId, database, kAcDbToolLayerName);
}

AcDbObjectId AcDbGetSuiteLayer(AcDbObjectId& layerId, AcDbDatabase* database) {
  return getModuleLayer(layerId, database, kAcDbSuiteLayerName);
}

int AcDbGetLayerNames(std::vector<std::wstring>& names) {
  AcDbDatabase* database = workingDatabase();
  AcDbLayerTable* layers = nullptr;
  if (database == nullptr || database->getLayerTable(layers, AcDb::kForRead) != Acad::eOk)
    return static_cast<int>(names.size());
  AcDbLayerTableIterator* it = nullptr;
  if (layers->newIterator(it) == Acad::eOk) {
    std::unique_ptr<AcDbLayerTableIterator> iterator(it);
    for (; !iterator->done(); iterator->step()) {
      AcDbLayerTableRecord* record = nullptr;
      if (iterator->getRecord(record, AcDb::kForRead) != Acad::eOk) continue;
      const ACHAR* name = nullptr;
      if (record->getName(name) == Acad::eOk && name != nullptr) names.emplace_back(name);
      record->close();
    }
  }
  layers->close();
  return static_cast<int>(names.size());
}

int AcDbGetBlockNames(std::vector<std::wstring>& names) {
  AcDbConnector connector;
  AcDbDatabase* database = connector.Database();
  if (database == nullptr) return static_cast<int>(names.size());
  // Only the database is needed; the connector's write open of model space would refuse the walk's read
  // of that record.
  connector.Disconnect();

  AcDbBlockTable* blocks = nullptr;
  if (database->getBlockTable(blocks, AcDb::kForRead) != Acad::eOk) {
    acedAlert(L"Failed to get block table!");
    return static_cast<int>(names.size());
  }
  AcDbBlockTableIterator* it = nullptr;
  Acad::ErrorStatus es = blocks->newIterator(it);
  if (es != Acad::eOk) {
    acutPrintf(L"Failed to get pBlockTableIterator! %d", static_cast<int>(es));
  } else {
    std::unique_ptr<AcDbBlockTableIterator> iterator(it);
    for (; !iterator->done(); iterator->step()) {
      AcDbBlockTableRecord* record = nullptr;
      es = iterator->getRecord(record, AcDb::kForRead);
      if (es != Acad::eOk) {
        acutPrintf(L"Failed to get AcDbBlockTableRecord! %d", static_cast<int>(es));
        continue;
      }
      const ACHAR* name = nullptr;
      if (!record->isLayout() && record->getName(name) == Acad::eOk && name != nullptr) names.emplace_back(name);
      record->close();
    }
  }
  blocks->close();
  return static_cast<int>(names.size());
}
