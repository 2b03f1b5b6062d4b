// Whether the drawing in the window has changes that are not in its file, so that closing the window or
// opening another drawing asks before they are lost.
//
// The drawing's change journal tells: every command that changed the drawing leaves one step, and Undo takes
// the last one back. The drawing is as it was filed while the journal holds exactly the steps it held then and
// never held fewer since (an undo below the saved state followed by a new command gives as many steps, but
// another drawing). The window looks at the journal before every prompt, so that no undo goes unseen.
#pragma once

namespace host::gui {

// Looks at the working drawing's journal; call whenever the user may have changed the drawing.
void noteDrawingChanges();
// The working drawing as it is now is the one in its file (just opened or saved).
void drawingFiled();
// The working drawing was opened with repairs: its file still holds the damaged drawing, so closing it
// asks to save until it is saved there.
void drawingRepairedOnOpening();
bool drawingHasUnsavedChanges();

}  // namespace host::gui
