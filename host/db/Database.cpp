// The drawing as modules see it, and the host services that hand it out.
#include "host/WideText.h"
#include "host/db/DbModel.h"
#include "sdk/AcDbHostApplicationServices.h"
#include "sdk/AcDbSymbolTables.h"

using host::db::Kind;

namespace {

// A database made outside the host has no drawing behind it; it answers eNoDatabase through the null id.
template <class Table>
Acad::ErrorStatus openTable(Table*& table, AcDbObjectId id, AcDb::OpenMode mode) {
  table = nullptr;
  if (id.isNull()) return Acad::eNoDatabase;
  AcDbObject* object = nullptr;
  Acad::ErrorStatus es = host::db::openObject(object, id, mode, false);
  table = static_cast<Table*>(object);
  return es;
}

}  // namespace

AcDbDatabase::~AcDbDatabase() = default;

Acad::ErrorStatus AcDbDatabase::getBlockTable(AcDbBlockTable*& table, AcDb::OpenMode mode) {
  return openTable(table, blockTableId(), mode);
}

Acad::ErrorStatus AcDbDatabase::getLayerTable(AcDbLayerTable*& table, AcDb::OpenMode mode) {
  return openTable(table, layerTableId(), mode);
}

Acad::ErrorStatus AcDbDatabase::getLinetypeTable(AcDbLinetypeTable*& table, AcDb::OpenMode mode) {
  return openTable(table, linetypeTableId(), mode);
}

AcDbObjectId AcDbDatabase::blockTableId() const { return imp_ ? imp_->blockTable : AcDbObjectId(); }

AcDbObjectId AcDbDatabase::layerTableId() const { return imp_ ? imp_->layerTable : AcDbObjectId(); }

AcDbObjectId AcDbDatabase::linetypeTableId() const {
  return imp_ ? imp_->linetypeTable : AcDbObjectId();
}

AcDbObjectId AcDbDatabase::clayer() const {
  if (imp_ == nullptr) return {};
  AcDbObjectId id = imp_->findLayerId(host::fromUtf8(imp_->currentLayer()));
  // A header naming a layer the drawing lacks: new entities go on layer 0, as the layer of last resort.
  return id.isNull() ? imp_->findLayerId(L"0") : id;
}

Acad::ErrorStatus AcDbDatabase::setClayer(AcDbObjectId layerId) {
  const host::db::ObjectRecord* r = host::db::findRecord(layerId);
  if (imp_ == nullptr) return Acad::eNoDatabase;
  if (r == nullptr || r->kind != Kind::LayerRecord || r->drawing != imp_) return Acad::eInvalidInput;
  dxf::LayerRecord layer(*r->item);
  if (layer.frozen()) return Acad::eInvalidLayer;
  imp_->doc().setHeaderText("$CLAYER", imp_->doc().layerName(layer));
  return Acad::eOk;
}

AcDbHostApplicationServices::~AcDbHostApplicationServices() = default;

AcDbDatabase* AcDbHostApplicationServices::workingDatabase() const {
  AcDbImpDatabase* drawing = host::db::workingDrawing();
  return drawing ? &drawing->facade() : nullptr;
}

AcDbHostApplicationServices* acdbHostApplicationServices() {
  static AcDbHostApplicationServices services;
  return &services;
}
