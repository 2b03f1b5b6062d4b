#include "host/db/DrawingView.h"

#include "host/db/DbModel.h"

namespace {

host::RedrawHandler& handler() {
  static auto* h = new host::RedrawHandler;
  return *h;
}

}  // namespace

namespace host {

RedrawHandler setRedrawHandler(RedrawHandler h) {
  RedrawHandler previous = std::move(handler());
  handler() = std::move(h);
  return previous;
}

bool isHighlighted(AcDbObjectId id) {
  const db::ObjectRecord* r = db::findRecord(id);
  return r != nullptr && r->highlighted;
}

}  // namespace host

namespace host::db {

void requestRedraw(AcDbObjectId id) {
  if (handler()) handler()(id);
}

}  // namespace host::db
