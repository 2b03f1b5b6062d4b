// The sort of the extended list. Rows are only small references, and the tables the lists show were always
// ordered this way, so a second sort of equal keys must come out exactly as before: the algorithm is fixed.
// It is not stable: rows that compare equal may change their order.
//
// Quicksort on an explicit stack of 30 pending ranges (no recursion): the middle element is the pivot; the
// larger part waits on the stack while the smaller one goes on at once, so the stack never holds more ranges
// than the binary logarithm of the row count. Ranges of 8 or fewer elements are sorted by repeatedly moving
// the greatest one to the end, where among equal elements the last one scanned wins.
#pragma once

#include <utility>

// `lessEqual(a, b)`: a sorts before b or with it.
template <class T, class LessEqual>
void ListQuickSort(T* items, int count, LessEqual lessEqual) {
  if (count < 2) return;
  struct Range {
    int lo;
    int hi;
  };
  constexpr int kStackRanges = 30;
  Range stack[kStackRanges];
  int pending = 0;
  int lo = 0;
  int hi = count - 1;
  for (;;) {
    const int size = hi - lo + 1;
    if (size <= 8) {
      for (int end = hi; end > lo; --end) {
        int greatest = lo;
        for (int p = lo + 1; p <= end; ++p)
          if (lessEqual(items[greatest], items[p])) greatest = p;
        std::swap(items[greatest], items[end]);
      }
      if (pending == 0) return;
      --pending;
      lo = stack[pending].lo;
      hi = stack[pending].hi;
      continue;
    }
    std::swap(items[lo], items[lo + size / 2]);
    int i = lo + 1;
    int j = hi;
    for (;;) {
      while (i <= hi && lessEqual(items[i], items[lo])) ++i;
      while (j > lo && lessEqual(items[lo], items[j])) --j;
      if (j < i) break;
      std::swap(items[i], items[j]);
    }
    std::swap(items[lo], items[j]);
    // Left part lo..j-1, right part i..hi; what lies between equals the pivot and is in place.
    const int leftSize = j - lo;
    const int rightSize = hi - i + 1;
    if (leftSize >= rightSize) {
      if (leftSize >= 2) stack[pending++] = Range{lo, j - 1};
      lo = i;
    } else {
      if (rightSize >= 2) stack[pending++] = Range{i, hi};
      hi = j - 1;
    }
  }
}
