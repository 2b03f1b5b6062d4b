// What a drawing looked like before each step of work on it, so that a step can be taken back whole: a
// command that failed half-way (out of memory, a result that is not finite) leaves no trace, and the user's
// undo brings the drawing back bit for bit.
//
// The journal keeps no copy of the drawing. A record as read from a text file and never changed is noted
// by its address alone: its tags are read again from its bytes in the file buffer when the step is taken
// back. Other records' tags are copied the first time a step changes them (eight bytes a tag, pointing
// into the file buffer); records appended during a step are simply taken off again. Taking a step back
// puts the old tags in place and allocates nothing, so it works when memory has run out.
#pragma once

#include "host/dxf/Entity.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace dxf {

class ChangeJournal {
 public:
  // Told about each record while a step is taken back: `restored` after a record got its old tags back,
  // `dropped` just before a record appended during the step goes away.
  struct Observer {
    std::function<void(Entity&)> restored;
    std::function<void(Entity&)> dropped;
  };

  // Opens a step named `label` (the command's name). Changes made while no step was open form a step of
  // their own, closed here.
  void beginStep(std::string label = {});
  // Closes the open step. A step that changed nothing is forgotten; answers whether it was kept.
  bool endStep();
  bool stepOpen() const { return open_; }
  // Takes back the open step (the work that failed) and forgets it.
  void rollbackStep(const Observer& observer);
  // Takes back the last closed step and tells its label; false when there is none.
  bool undoStep(const Observer& observer, std::string* label = nullptr);
  std::size_t closedSteps() const { return closed_.size(); }
  // Forgets every step (the drawing was replaced).
  void clear();

  // Call before a record changes in place: its state is kept the first time within a step.
  void recordChange(Entity& record);
  // Call before appending to a sequence of records: what lies beyond its present end goes on take-back.
  void recordAppend(std::deque<Entity>& sequence);
  // Something else to do on take-back (a section the step added), run after the records are restored,
  // last recorded first.
  void recordUndoAction(std::function<void()> action);

 private:
  struct Saved {
    Entity* record;
    TagList tags;
    Children children;
    bool erased;
  };
  // A record as read from the file, without children: its packed tags, copied into the step's arena, say
  // all there is to it. Most records a command changes are such, and an arena allocates in large blocks.
  struct Kept {
    Entity* record;
    const char* base;
    const void* packed;
    std::uint32_t count;
    bool erased;
  };
  // A record as read from a text file, with its children (vertices, attributes) as read too: their bytes
  // there are all there is to them.
  struct Reread {
    Entity* record;
    std::uint32_t count;
    std::uint32_t children;
    bool erased;
  };
  struct Append {
    std::deque<Entity>* sequence;
    std::size_t size;
  };
  struct Step {
    std::uint32_t serial = 0;
    std::string label;
    std::deque<Saved> saved;  // deques: a large step grows without copying what it holds
    std::deque<Kept> kept;
    std::deque<Reread> reread;
    std::vector<std::unique_ptr<std::uint64_t[]>> arena;
    std::size_t arenaUsed = 0;  // of the last block
    std::vector<Append> appends;
    std::vector<std::function<void()>> actions;
    bool empty() const {
      return saved.empty() && kept.empty() && reread.empty() && appends.empty() && actions.empty();
    }
    void* keep(const void* packed, std::size_t count);
  };

  Step& current();
  static void takeBack(Step& step, const Observer& observer);
  static bool unchanged(const Saved& saved);
  static bool unchangedKept(const Kept& kept);
  static bool unchangedReread(const Reread& reread);
  static bool rereadable(const Entity& record);
  static bool childrenRereadable(const Entity& record);
  static void reread(Entity& record);

  std::deque<Step> closed_;  // a deque: steps are never copied when one is added
  Step step_;
  bool open_ = false;
  bool implicit_ = false;  // opened by a change outside any step
  std::uint32_t nextSerial_ = 1;
};

}  // namespace dxf
