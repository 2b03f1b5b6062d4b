// Entities: layer and colour, transformation, highlighting, and the point and line classes.
#include "host/WideText.h"
#include "host/db/DbModel.h"
#include "host/db/DrawingView.h"
#include "host/db/Undo.h"
#include "host/dxf/TransformDrawing.h"
#include "sdk/AcDbEntities.h"

#include <cmath>
#include <cstring>
#include <cstdlib>
#include <new>

using host::db::Kind;

namespace {

AcDbImpObject* newEntityImp(const char* type, std::initializer_list<std::pair<int, const char*>> tags) {
  auto* imp = new AcDbImpObject;
  imp->kind = Kind::Entity;
  imp->entity.type = type;
  std::size_t i = 0;
  for (const auto& [code, text] : tags) imp->entity.tags.insert(i++, code, text);
  return imp;
}

AcGePoint3d readPoint(const dxf::TagList& tags, int code) {
  AcGePoint3d p;
  double* xyz[3] = {&p.x, &p.y, &p.z};
  for (int k = 0; k < 3; ++k)
    if (auto i = tags.find(code + 10 * k))
      if (auto v = tags.number(*i)) *xyz[k] = *v;
  return p;
}

// Sets the point's three coordinates; one the entity lacks (a 2D point of an R12 file has no Z) is
// added after the coordinate before it.
void writePoint(dxf::TagList& tags, int code, const AcGePoint3d& p) {
  const double xyz[3] = {p.x, p.y, p.z};
  std::size_t after = tags.size();
  for (int k = 0; k < 3; ++k) {
    if (auto i = tags.find(code + 10 * k)) {
      tags.setNumber(*i, xyz[k]);
      after = *i + 1;
    } else {
      tags.insertNumber(after, code + 10 * k, xyz[k]);
      ++after;
    }
  }
}

// Where common entity data goes when the entity lacks it: behind the AcDbEntity marker (and the layer,
// for the colour), as the other common data of the entity.
std::size_t commonDataPosition(const dxf::TagList& tags, int code) {
  if (code != 8)
    if (auto layer = tags.find(8)) return *layer + 1;
  for (std::size_t i = 0; i < tags.size(); ++i)
    if (tags.code(i) == 100 && tags.text(i) == "AcDbEntity") return i + 1;
  return 0;
}

void setCommonTag(dxf::TagList& tags, int code, std::string text) {
  if (auto i = tags.find(code))
    tags.setText(*i, std::move(text));
  else
    tags.insert(commonDataPosition(tags, code), code, std::move(text));
}

dxf::Entity* data(const AcDbObject& object) { return object.imp()->entityData(); }

Acad::ErrorStatus setPoint(AcDbEntity& entity, int code, const AcGePoint3d& point) {
  // A drawing never gets a coordinate that no reader can take back.
  if (!std::isfinite(point.x) || !std::isfinite(point.y) || !std::isfinite(point.z)) return Acad::eInvalidInput;
  if (Acad::ErrorStatus es = host::db::checkWritable(entity); es != Acad::eOk) return es;
  writePoint(data(entity)->tags, code, point);
  return Acad::eOk;
}

AcGePoint3d getPoint(const AcDbEntity& entity, int code) {
  const dxf::Entity* e = data(entity);
  return e ? readPoint(e->tags, code) : AcGePoint3d();
}

Acad::ErrorStatus mapStatus(dxf::TransformStatus status) {
  switch (status) {
    case dxf::TransformStatus::Ok: return Acad::eOk;
    case dxf::TransformStatus::CannotScaleNonUniformly: return Acad::eCannotScaleNonUniformly;
    case dxf::TransformStatus::NotSupported: return Acad::eNotApplicable;
    case dxf::TransformStatus::InvalidData: return Acad::eInvalidInput;
    case dxf::TransformStatus::NotFinite: return Acad::eInvalidInput;
  }
  return Acad::eInvalidInput;
}

Acad::ErrorStatus setHighlight(const AcDbObject& entity, const AcDbFullSubentPath& path, bool on) {
  host::db::ObjectRecord* r = entity.imp()->record;
  if (r == nullptr) return entity.imp()->detached ? Acad::eNoDatabase : Acad::eNotInDatabase;
  // Entities here have no parts of their own to show apart.
  if (!path.isNull()) return Acad::eInvalidInput;
  if (r->highlighted != on) {
    r->highlighted = on;
    host::db::requestRedraw(r->id());
  }
  return Acad::eOk;
}

}  // namespace

AcDbEntity::~AcDbEntity() = default;

AcDbObjectId AcDbEntity::layerId() const {
  AcDbImpObject* imp = this->imp();
  if (imp->isNew()) {
    AcDbImpDatabase* working = host::db::workingDrawing();
    return working && !imp->layer.empty() ? working->findLayerId(imp->layer) : AcDbObjectId();
  }
  if (imp->record == nullptr) return {};
  return imp->record->drawing->layerIdOfRaw(imp->record->item->value(8, "0"));
}

ACHAR* AcDbEntity::layer() const {
  AcDbImpObject* imp = this->imp();
  std::wstring name;
  if (imp->isNew())
    name = imp->layer;
  else if (imp->record != nullptr)
    name = host::fromUtf8(imp->record->drawing->doc().layerOf(*imp->record->item));
  auto* copy = new ACHAR[name.size() + 1];
  std::wmemcpy(copy, name.c_str(), name.size() + 1);
  return copy;
}

Acad::ErrorStatus AcDbEntity::setLayer(const ACHAR* layerName, bool) {
  if (layerName == nullptr) return Acad::eInvalidInput;
  if (Acad::ErrorStatus es = host::db::checkWritable(*this); es != Acad::eOk) return es;
  AcDbImpObject* imp = this->imp();
  // A new entity takes the name of a layer of the drawing it will most likely join.
  AcDbImpDatabase* drawing = imp->isNew() ? host::db::workingDrawing() : imp->drawing();
  if (drawing == nullptr) return Acad::eNoDatabase;
  std::optional<dxf::LayerRecord> layer = drawing->doc().findLayer(host::toUtf8(layerName));
  if (!layer) return Acad::eKeyNotFound;
  if (imp->isNew())
    imp->layer = host::fromUtf8(drawing->doc().layerName(*layer));
  else
    setCommonTag(imp->record->item->tags, 8, std::string(layer->rawName()));
  return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::setLayer(AcDbObjectId layerId, bool doSubents) {
  host::db::ObjectRecord* r = host::db::findRecord(layerId);
  if (r == nullptr || r->kind != Kind::LayerRecord) return Acad::eInvalidInput;
  if (imp()->drawing() != nullptr && imp()->drawing() != r->drawing) return Acad::eWrongDatabase;
  std::wstring name = host::fromUtf8(r->drawing->doc().layerName(dxf::LayerRecord(*r->item)));
  return setLayer(name.c_str(), doSubents);
}

Adesk::UInt16 AcDbEntity::colorIndex() const {
  const dxf::Entity* e = data(*this);
  if (e == nullptr) return AcCmColor::kByLayer;
  auto i = e->tags.find(62);
  auto v = i ? e->tags.integer(*i) : std::nullopt;
  if (!v) return AcCmColor::kByLayer;
  long long index = std::llabs(*v);
  return index <= AcCmColor::kByLayer ? static_cast<Adesk::UInt16>(index) : AcCmColor::kByLayer;
}

Acad::ErrorStatus AcDbEntity::setColorIndex(Adesk::UInt16 index, bool) {
  if (index > AcCmColor::kByLayer) return Acad::eInvalidInput;
  if (Acad::ErrorStatus es = host::db::checkWritable(*this); es != Acad::eOk) return es;
  setCommonTag(data(*this)->tags, 62, std::to_string(index));
  return Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::transformBy(const AcGeMatrix3d& xform) {
  if (Acad::ErrorStatus es = host::db::checkWritable(*this); es != Acad::eOk) return es;
  dxf::Matrix44 m;
  for (int r = 0; r < 4; ++r)
    for (int c = 0; c < 4; ++c) m.m[r][c] = xform.entry[r][c];
  dxf::Entity& entity = *data(*this);
  dxf::TransformStatus status = dxf::TransformStatus::Ok;
  try {
    // An entity of a drawing may take parts of the drawing along (a dimension or a table its block).
    AcDbImpDatabase* drawing = imp()->drawing();
    status = drawing != nullptr ? dxf::transformInDrawing(drawing->doc(), entity, m) : dxf::transformEntity(entity, m);
  } catch (const std::bad_alloc&) {
    // The caller learns of it as before; the command's changes are taken back when it ends.
    host::noteCommandFailure("out of memory");
    throw;
  }
  if (status != dxf::TransformStatus::Ok) host::noteEntityUnchanged(entity.type, dxf::describe(status));
  if (status == dxf::TransformStatus::NotFinite) host::noteCommandFailure("a result is not finite");
  return mapStatus(status);
}

Acad::ErrorStatus AcDbEntity::highlight(const AcDbFullSubentPath& subId, bool) const {
  return setHighlight(*this, subId, true);
}

Acad::ErrorStatus AcDbEntity::unhighlight(const AcDbFullSubentPath& subId, bool) const {
  return setHighlight(*this, subId, false);
}

Acad::ErrorStatus AcDbEntity::draw() {
  host::db::ObjectRecord* r = imp()->record;
  if (r == nullptr) return imp()->detached ? Acad::eNoDatabase : Acad::eNotInDatabase;
  host::db::requestRedraw(r->id());
  return Acad::eOk;
}

// ---- points and lines ----------------------------------------------------------------------------------

AcDbPoint::AcDbPoint() : AcDbPoint(AcGePoint3d::kOrigin) {}

AcDbPoint::AcDbPoint(const AcGePoint3d& position) : AcDbEntity(newEntityImp("POINT", {{100, "AcDbPoint"}})) {
  writePoint(imp()->entity.tags, 10, position);
}

AcDbPoint::~AcDbPoint() = default;

AcGePoint3d AcDbPoint::position() const { return getPoint(*this, 10); }

Acad::ErrorStatus AcDbPoint::setPosition(const AcGePoint3d& position) { return setPoint(*this, 10, position); }

AcDbLine::AcDbLine() : AcDbLine(AcGePoint3d::kOrigin, AcGePoint3d::kOrigin) {}

AcDbLine::AcDbLine(const AcGePoint3d& start, const AcGePoint3d& end)
    : AcDbEntity(newEntityImp("LINE", {{100, "AcDbLine"}})) {
  writePoint(imp()->entity.tags, 10, start);
  writePoint(imp()->entity.tags, 11, end);
}

AcDbLine::~AcDbLine() = default;

AcGePoint3d AcDbLine::startPoint() const { return getPoint(*this, 10); }

AcGePoint3d AcDbLine::endPoint() const { return getPoint(*this, 11); }

Acad::ErrorStatus AcDbLine::setStartPoint(const AcGePoint3d& point) { return setPoint(*this, 10, point); }

Acad::ErrorStatus AcDbLine::setEndPoint(const AcGePoint3d& point) { return setPoint(*this, 11, point); }
