// A growing sequence whose elements never move: the host's object records, one per entity of a drawing.
//
// Open objects and ids point at their records for as long as the drawing is open, so a record may not move
// when more are made; and a survey drawing has millions of them, so one allocation each (a deque's small
// blocks, a hash map's nodes) costs more than the records themselves. Elements live in blocks of `kBlock`,
// are found by their number with one division, and a million of them take a few hundred allocations.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

namespace host::db {

template <class T, std::size_t kBlock = 1024>
class StableVector {
 public:
  std::size_t size() const { return size_; }
  T& operator[](std::size_t i) { return blocks_[i / kBlock][i % kBlock]; }
  const T& operator[](std::size_t i) const { return blocks_[i / kBlock][i % kBlock]; }

  // A default-made element at the end.
  T& emplace_back() {
    if (size_ % kBlock == 0) blocks_.push_back(std::make_unique<T[]>(kBlock));
    return (*this)[size_++];
  }

  template <class F>
  void forEach(F&& f) {
    for (std::size_t i = 0; i < size_; ++i) f((*this)[i]);
  }

 private:
  std::vector<std::unique_ptr<T[]>> blocks_;
  std::size_t size_ = 0;
};

}  // namespace host::db
