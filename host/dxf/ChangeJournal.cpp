#include "host/dxf/ChangeJournal.h"

#include "host/dxf/TagReader.h"

#include <cstring>
#include <utility>

namespace dxf {

namespace {

bool sameTags(const TagList& a, const TagList& b) {
  if (a.modified() != b.modified() || a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i)
    if (a.code(i) != b.code(i) || a.text(i) != b.text(i) || a.codeText(i) != b.codeText(i)) return false;
  return true;
}

bool sameRecords(const Children& a, const Children& b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i)
    if (a[i].type != b[i].type || a[i].erased != b[i].erased || !sameTags(a[i].tags, b[i].tags) ||
        !sameRecords(a[i].children, b[i].children))
      return false;
  return true;
}

}  // namespace

ChangeJournal::Step& ChangeJournal::current() {
  if (!open_) {
    beginStep();
    implicit_ = true;
  }
  return step_;
}

void ChangeJournal::beginStep(std::string label) {
  if (open_) endStep();
  step_ = Step{};
  step_.serial = nextSerial_++;
  step_.label = std::move(label);
  open_ = true;
  implicit_ = false;
}

bool ChangeJournal::unchanged(const Saved& s) {
  return s.record->erased == s.erased && sameTags(s.record->tags, s.tags) && sameRecords(s.record->children, s.children);
}

namespace {

// The record's own bytes, without its children's.
std::string_view ownBytes(const Entity& record) {
  if (record.children.empty()) return record.source;
  const std::string_view first = record.children.front().source;
  const std::less<const char*> before;
  if (first.empty() || before(first.data(), record.source.data()) ||
      before(record.source.data() + record.source.size(), first.data()))
    return {};
  return record.source.substr(0, static_cast<std::size_t>(first.data() - record.source.data()));
}

}  // namespace

bool ChangeJournal::unchangedReread(const Reread& r) {
  return r.record->erased == r.erased && r.record->tags.pristine() && r.record->tags.size() == r.count &&
         r.record->children.size() == r.children && childrenRereadable(*r.record);
}

bool ChangeJournal::childrenRereadable(const Entity& record) {
  for (const Entity& child : record.children)
    if (child.erased || !child.children.empty() || !child.tags.pristine() || !rereadable(child)) return false;
  return true;
}

bool ChangeJournal::rereadable(const Entity& record) {
  // Its tags were read from its bytes (a binary file's values are texts kept elsewhere), and the bytes
  // end with the last tag's value line.
  const TagList& tags = record.tags;
  const std::string_view source = ownBytes(record);
  if (source.empty() || tags.empty()) return false;
  const std::less<const char*> before;
  const char* first = tags.firstValue();
  if (before(first, source.data()) || !before(first, source.data() + source.size())) return false;
  const std::string_view last = tags.fileBytes(tags.size() - 1);
  if (last.empty() || before(last.data(), source.data())) return false;
  const std::size_t lastEnd = static_cast<std::size_t>(last.data() - source.data()) + last.size();
  return lastEnd <= source.size() && source.size() - lastEnd <= 2;
}

void ChangeJournal::reread(Entity& record) {
  TagList& tags = record.tags;
  tags.clearForRereading();
  TagReader reader(ownBytes(record));
  if (reader.peek()) reader.advance();  // past the record's 0 tag
  while (const RawTag* t = reader.peek()) {
    tags.appendRaw(t->code, t->codeText, t->text);
    reader.advance();
  }
}

bool ChangeJournal::unchangedKept(const Kept& k) {
  return k.record->erased == k.erased && k.record->tags.pristine() && k.record->tags.size() == k.count &&
         k.record->children.empty();
}

namespace {
constexpr std::size_t kArenaBlock = std::size_t{1} << 16;  // tags per block: half a megabyte
}

void* ChangeJournal::Step::keep(const void* packed, std::size_t count) {
  if (arena.empty() || arenaUsed + count > kArenaBlock) {
    arena.push_back(std::make_unique_for_overwrite<std::uint64_t[]>(kArenaBlock));
    arenaUsed = 0;
  }
  std::uint64_t* at = arena.back().get() + arenaUsed;
  if (count > 0) std::memcpy(at, packed, count * TagList::kPackedTagSize);
  arenaUsed += count;
  return at;
}

bool ChangeJournal::endStep() {
  if (!open_) return false;
  open_ = false;
  implicit_ = false;
  // A record opened for a change that did not come (a refused transformation, a value set to what it
  // was) is no change of the drawing.
  std::erase_if(step_.saved, unchanged);
  std::erase_if(step_.kept, unchangedKept);
  std::erase_if(step_.reread, unchangedReread);
  std::erase_if(step_.appends, [](const Append& a) { return a.sequence->size() == a.size; });
  if (step_.empty()) {
    step_ = Step{};
    return false;
  }
  closed_.push_back(std::move(step_));
  step_ = Step{};
  return true;
}

void ChangeJournal::takeBack(Step& step, const Observer& observer) {
  for (auto it = step.saved.rbegin(); it != step.saved.rend(); ++it) {
    Entity& record = *it->record;
    record.tags = std::move(it->tags);
    record.children = std::move(it->children);
    record.erased = it->erased;
    if (observer.restored) observer.restored(record);
  }
  for (auto it = step.kept.rbegin(); it != step.kept.rend(); ++it) {
    Entity& record = *it->record;
    record.tags.restorePristine(it->packed, it->count, it->base);
    record.erased = it->erased;
    if (observer.restored) observer.restored(record);
  }
  for (auto it = step.reread.rbegin(); it != step.reread.rend(); ++it) {
    Entity& record = *it->record;
    reread(record);
    while (record.children.size() > it->children) record.children.pop_back();  // appended during the step
    for (Entity& child : record.children) {
      reread(child);
      child.erased = false;
    }
    record.erased = it->erased;
    if (observer.restored) observer.restored(record);
  }
  for (auto it = step.appends.rbegin(); it != step.appends.rend(); ++it) {
    std::deque<Entity>& sequence = *it->sequence;
    while (sequence.size() > it->size) {
      if (observer.dropped) observer.dropped(sequence.back());
      sequence.pop_back();
    }
  }
  for (auto it = step.actions.rbegin(); it != step.actions.rend(); ++it) (*it)();
  // Emptied, not replaced: a fresh deque allocates, and this runs when memory may have run out.
  step.saved.clear();
  step.kept.clear();
  step.reread.clear();
  step.arena.clear();
  step.arenaUsed = 0;
  step.appends.clear();
  step.actions.clear();
}

void ChangeJournal::rollbackStep(const Observer& observer) {
  if (!open_) return;
  open_ = false;
  implicit_ = false;
  takeBack(step_, observer);
}

bool ChangeJournal::undoStep(const Observer& observer, std::string* label) {
  if (open_ && implicit_) endStep();
  if (closed_.empty()) return false;
  Step last = std::move(closed_.back());
  closed_.pop_back();
  if (label) *label = std::move(last.label);
  takeBack(last, observer);
  return true;
}

void ChangeJournal::clear() {
  closed_.clear();
  step_ = Step{};
  open_ = false;
  implicit_ = false;
}

void ChangeJournal::recordChange(Entity& record) {
  Step& step = current();
  if (record.journalStep == step.serial) return;
  const TagList& tags = record.tags;
  if (tags.pristine() && rereadable(record) && childrenRereadable(record)) {
    step.reread.push_back(Reread{&record, static_cast<std::uint32_t>(tags.size()),
                                 static_cast<std::uint32_t>(record.children.size()), record.erased});
  } else if (record.children.empty() && tags.pristine() && tags.size() <= kArenaBlock) {
    const void* packed = step.keep(tags.packedTags(), tags.size());
    step.kept.push_back(Kept{&record, tags.packedBase(), packed, static_cast<std::uint32_t>(tags.size()), record.erased});
  } else {
    step.saved.push_back(Saved{&record, record.tags, record.children, record.erased});
  }
  record.journalStep = step.serial;
}

void ChangeJournal::recordAppend(std::deque<Entity>& sequence) {
  Step& step = current();
  for (const Append& a : step.appends)
    if (a.sequence == &sequence) return;
  step.appends.push_back(Append{&sequence, sequence.size()});
}

void ChangeJournal::recordUndoAction(std::function<void()> action) {
  current().actions.push_back(std::move(action));
}

}  // namespace dxf
