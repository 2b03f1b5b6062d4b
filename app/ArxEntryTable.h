// The growable tables that hold the module's commands, LISP functions and custom classes. Each entry is a
// static object beside its code and appends itself while the module's static objects are constructed, so
// the tables are complete before the host sends its first message.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <utility>
#include <vector>

template <class T>
class ArxEntryTable {
 public:
  static constexpr std::size_t kGrowBy = 8;
  // Once the entries fill this many bytes the table stops doubling and grows by kLargeGrowBy entries.
  static constexpr std::size_t kLargeTableBytes = 65536;
  static constexpr std::size_t kLargeGrowBy = 221;

  ArxEntryTable() = default;
  virtual ~ArxEntryTable() = default;

  std::size_t Count() const { return count_; }
  std::size_t Capacity() const { return slots_.size(); }
  bool IsEmpty() const { return count_ == 0; }

  T& operator[](std::size_t index) { return slots_.at(checked(index)); }
  const T& operator[](std::size_t index) const { return slots_.at(checked(index)); }

  // Answers the index of the new entry.
  std::size_t Append(const T& entry) { return InsertAt(count_, entry); }
  // Entries from `index` on move up by one; an index beyond the end appends.
  std::size_t InsertAt(std::size_t index, const T& entry) {
    if (index > count_) index = count_;
    if (count_ == slots_.size()) slots_.resize(slots_.size() + GrowthFor(count_));
    for (std::size_t i = count_; i > index; --i) slots_[i] = std::move(slots_[i - 1]);
    slots_[index] = entry;
    ++count_;
    return index;
  }

  // How many entries a full table of `count` entries grows by: as many as it holds, kLargeGrowBy once
  // they fill kLargeTableBytes, never fewer than kGrowBy.
  static std::size_t GrowthFor(std::size_t count) {
    std::size_t growth = count * sizeof(T) >= kLargeTableBytes ? kLargeGrowBy : count;
    return growth < kGrowBy ? kGrowBy : growth;
  }

 private:
  std::size_t checked(std::size_t index) const {
    if (index >= count_) throw std::out_of_range("entry table index");
    return index;
  }

  std::vector<T> slots_;
  std::size_t count_ = 0;
};
