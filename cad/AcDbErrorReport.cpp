#include "cad/AcDbErrorReport.h"

#include "cad/AcDbStatusNames.h"
#include "sdk/AcEd.h"

namespace {

// A plain scan from the first row: the table is small and reporting happens only on failures.
const ACHAR* findStatusName(int status, const ACHAR* unknown) {
  for (const AcDbStatusName& row : kAcDbStatusNames)
    if (row.code == status) return row.name;
  return unknown;
}

}  // namespace

const ACHAR* AcDbErrorName(int status) { return findStatusName(status, L"Unknown Error"); }

Acad::ErrorStatus AcDbReportError(Acad::ErrorStatus status, const ACHAR* context, bool always) {
  if (status == Acad::eOk && !always) return status;
  // The report names unknown codes differently from AcDbErrorName; both texts are what users know.
  const ACHAR* name = findStatusName(status, L"Unknown Acad Error");
  if (context != nullptr)
    acutPrintf(L"AutoCAD ERROR: %d - %s : %s\n", static_cast<int>(status), name, context);
  else
    acutPrintf(L"AutoCAD ERROR: %d - %s\n", static_cast<int>(status), name);
  return status;
}
