// Commands change the drawing all or nothing, and the last one can be undone.
//
// The command line opens a step of the working drawing's change journal around every command. When the
// host fails under a command's changes (memory runs out, a result would not be a finite number) the step
// is taken back when the command ends: the drawing is as it was before, whatever the module made of the
// failure. The module's own behaviour is left alone: it sees the failing call fail as before.
//
// Undo (the command U, also typed as _U; the window binds Ctrl+Z to it) takes back the last command that
// changed the drawing, so that a drawing saved after the undo is byte for byte the one saved before that
// command. The view is asked to redraw everything (host::db::requestRedraw with the null id) afterwards.
#pragma once

#include <string>
#include <string_view>

namespace host {

// Called by the command line around each command; a command run inside another joins the outer one.
void beginCommandChanges(std::string_view commandName);

// What the host has to say when the outermost command ends.
struct CommandOutcome {
  std::string unchangedReport;  // "3 entities stayed where they were: 2 ARC (cannot scale ...)"; may be empty
  std::string failure;          // why the command's changes were taken back; empty when they stand
};
CommandOutcome endCommandChanges();

// A failure of the host while a command changes the drawing; the first reason is the one reported.
// Outside a command it changes nothing.
void noteCommandFailure(std::string_view reason);

// An entity the running command asked to change that stayed where it was, with the reason.
void noteEntityUnchanged(std::string_view dxfType, std::string_view reason);

// Undoes the last command that changed the working drawing. Answers its name (as the command line knew
// it), or nothing when there is nothing to undo.
bool undoLastCommand(std::string& commandName);

// Whether a command of this run was taken back after a failure: a headless run then ends with an error.
bool anyCommandTakenBack();

}  // namespace host
