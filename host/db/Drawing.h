// The host's one open drawing: opened from a DXF file as the working database that commands work on,
// saved back to DXF. Used by the command-line front end, the script runner (@open, @save) and the editor
// (the CLAYER variable).
#pragma once

#include <string>
#include <vector>

namespace dxf {
class Document;
}

namespace host {

// Opens the file as the working drawing, replacing the one open before. On failure returns false with a
// message in `error`, and the drawing open before stays open, unchanged.
bool openDrawing(const std::string& path, std::string& error);

// Opens a damaged file as the working drawing as far as it can be repaired; `repairs` gets one line per
// kind of repair with its count (empty when nothing needed repair). The file itself stays as it is until
// the drawing is saved.
bool recoverDrawing(const std::string& path, std::vector<std::string>& repairs, std::string& error);

// True when recoverDrawing would open the file (which openDrawing refused).
bool drawingIsRecoverable(const std::string& path);

// Writes the working drawing to `path` (the file it was opened from when `path` is empty). The file is
// replaced atomically: on failure it is untouched and `error` says why. False also when no drawing is open.
bool saveDrawing(const std::string& path, std::string& error);

bool hasDrawing();

// The file the working drawing was opened from; empty when none is open.
std::string drawingPath();

// Closes the working drawing without saving. Objects still open become detached: closing them only frees
// them, and ids of the drawing name nothing any more.
void closeDrawing();

// The name of the current layer ($CLAYER, "0" when the drawing does not say); empty when no drawing is open.
std::wstring currentLayerName();

// The store of the working drawing (null when none is open), for the drawing view.
dxf::Document* workingDocument();

}  // namespace host
