#include "cad/AcDbConnector.h"

#include "sdk/AcDbDatabase.h"
#include "sdk/AcDbEntity.h"
#include "sdk/AcDbHostApplicationServices.h"
#include "sdk/AcDbSymbolTables.h"
#include "sdk/AcEd.h"

AcDbConnector::AcDbConnector(bool connectNow) {
  if (connectNow) Connect();
}

AcDbConnector::~AcDbConnector() { Disconnect(); }

bool AcDbConnector::Connect() {
  if (IsConnected()) return true;
  AcDbHostApplicationServices* services = acdbHostApplicationServices();
  database_ = services != nullptr ? services->workingDatabase() : nullptr;
  if (database_ == nullptr) {
    acedAlert(L"No database!");
    return false;
  }

  AcDbBlockTable* blockTable = nullptr;
  if (database_->getBlockTable(blockTable, AcDb::kForRead) != Acad::eOk) {
    acedAlert(L"Failed to get block table!");
    Disconnect();
    return false;
  }
  Acad::ErrorStatus es = blockTable->getAt(ACDB_MODEL_SPACE, modelSpace_, AcDb::kForWrite);
  blockTable->close();
  if (es == Acad::eOk) return true;

  // Model space open elsewhere is a state of the drawing, not of the host: printed, not alerted.
  acutPrintf(L"Failed to get block table record!");
  Disconnect();
  return false;
}

bool AcDbConnector::Reconnect() {
  Disconnect();
  return Connect();
}

void AcDbConnector::Disconnect() {
  closeModelSpace();
  database_ = nullptr;
}

void AcDbConnector::closeModelSpace() {
  if (modelSpace_ != nullptr) modelSpace_->close();
  modelSpace_ = nullptr;
}

void AcDbConnector::GetCurrentLayer(AcDbObjectId& layerId) const {
  layerId = IsConnected() ? database_->clayer() : AcDbObjectId::kNull;
}

bool AcDbConnector::AppendToModelSpace(AcDbEntity* entity, AcDbObjectId& entityId, bool closeEntity) {
  entityId.setNull();
  const ACHAR* message = L"AcDbConnector not connected!";
  if (IsConnected()) {
    if (modelSpace_->appendAcDbEntity(entityId, entity) == Acad::eOk) {
      if (closeEntity) entity->close();
      return true;
    }
    message = L"AcDbConnector::AppendToModelSpace()\nFailed to append entity!";
  }
  acedAlert(message);
  if (closeEntity && entity != nullptr) {
    // Erasing fails for an entity that never became part of the drawing; closing it then frees it.
    entity->erase();
    entity->close();
  }
  return false;
}

bool AcDbConnector::AppendToModelSpace(AcDbEntity* entity, bool closeEntity) {
  AcDbObjectId entityId;
  return AppendToModelSpace(entity, entityId, closeEntity);
}
