// The working drawing with its model space open for writing: what a command needs to add entities or to
// walk model space.
#pragma once

#include "sdk/AcDbObjectId.h"

class AcDbBlockTableRecord;
class AcDbDatabase;
class AcDbEntity;

class AcDbConnector {
 public:
  // With connectNow set, Connect() runs at once (and shows its own messages on failure).
  explicit AcDbConnector(bool connectNow = true);
  // Closes model space if it is open.
  virtual ~AcDbConnector();
  AcDbConnector(const AcDbConnector&) = delete;
  AcDbConnector& operator=(const AcDbConnector&) = delete;

  // Takes the working database and opens its model space for writing. On failure the user is told why
  // (an alert for a missing database or block table, a command-line line for model space) and the
  // connector stays disconnected. A connector that is connected already stays as it is.
  bool Connect();
  // Lets go of model space and the database, then connects again (after the drawing was replaced).
  bool Reconnect();
  // Closes model space and forgets the database; the connector is disconnected afterwards.
  void Disconnect();

  bool IsConnected() const { return database_ != nullptr && modelSpace_ != nullptr; }
  AcDbDatabase* Database() const { return database_; }
  // Open for writing while connected; null otherwise.
  AcDbBlockTableRecord* ModelSpace() const { return modelSpace_; }
  // The drawing's current layer, or the null id when not connected.
  void GetCurrentLayer(AcDbObjectId& layerId) const;

  // Appends a new entity to model space; `entityId` is its id afterwards (null on failure). With
  // closeEntity set the entity is closed after a successful append, and on failure it is erased and closed
  // (a new entity is freed by that), so the caller never touches it again. A failure is shown as an alert.
  bool AppendToModelSpace(AcDbEntity* entity, AcDbObjectId& entityId, bool closeEntity = true);
  bool AppendToModelSpace(AcDbEntity* entity, bool closeEntity = true);

 private:
  void closeModelSpace();

  AcDbDatabase* database_ = nullptr;
  AcDbBlockTableRecord* modelSpace_ = nullptr;
};
