// The bottom layer of the DXF store: one entity, table record or object as its ordered group-code/value tags.
//
// Values are kept as the text they had in the file, so that a value nobody touched is written back byte
// for byte. A number that is changed is kept as its double and spelled only when the drawing is written,
// as the shortest text that reads back to the same double: a transformation changes millions of them,
// and their texts would take more room than the tags themselves.
//
// A drawing has millions of tags, so a tag is stored in 8 bytes: its value as an offset and length into
// the file buffer (or into the list's own store once the program set it), its code, and the length of its
// code line, which in the file stands right before the value line. Texts and numbers the program sets are
// kept in one block per list.
#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace dxf {

struct Tag {
  int code = 0;
  std::string_view codeText;  // the code line as read ("  10"); empty for tags made by the program
  std::string_view text;      // the value line without its line ending
};

class TagList {
 public:
  TagList() = default;
  TagList(const TagList& other);
  TagList& operator=(const TagList& other);
  TagList(TagList&&) noexcept = default;
  TagList& operator=(TagList&&) noexcept = default;
  ~TagList() = default;

  // Walks the tags in order; the Tag seen through an iterator lives as long as the iterator.
  class const_iterator {
   public:
    using iterator_category = std::input_iterator_tag;
    using value_type = Tag;
    using difference_type = std::ptrdiff_t;
    using pointer = const Tag*;
    using reference = const Tag&;

    const_iterator() = default;
    const_iterator(const TagList* list, std::size_t i) : list_(list), i_(i) {}
    const Tag& operator*() const {
      current_ = (*list_)[i_];
      return current_;
    }
    const Tag* operator->() const { return &**this; }
    const_iterator& operator++() {
      ++i_;
      return *this;
    }
    const_iterator operator++(int) {
      const_iterator old = *this;
      ++i_;
      return old;
    }
    bool operator==(const const_iterator& o) const { return i_ == o.i_; }

   private:
    const TagList* list_ = nullptr;
    std::size_t i_ = 0;
    mutable Tag current_;
  };

  std::size_t size() const { return tags_.size(); }
  bool empty() const { return tags_.empty(); }
  // The tag by value: its views point into the file buffer or into this list's store, and stay valid
  // until this list is next changed. A number the program set is spelled on first asking (into a cache
  // of the list, so two threads must not ask one list at once; writing uses keptNumber instead).
  Tag operator[](std::size_t i) const { return Tag{code(i), codeText(i), text(i)}; }
  int code(std::size_t i) const {
    const int c = tags_[i].code();
    return c != kWideCode ? c : wideCode(tags_[i]);
  }
  std::string_view text(std::size_t i) const;
  std::string_view codeText(std::size_t i) const;
  const_iterator begin() const { return const_iterator(this, 0); }
  const_iterator end() const { return const_iterator(this, tags_.size()); }

  // The value read as a number; nothing when the text is not one.
  std::optional<double> number(std::size_t i) const;
  // A number the program set, as its double; false for a tag that holds text.
  bool keptNumber(std::size_t i, double& value) const;
  // The tag's bytes in the file, from its code line to the end of its value line without the line
  // ending; empty for a tag whose value or code line the program made.
  std::string_view fileBytes(std::size_t i) const;
  std::optional<long long> integer(std::size_t i) const;

  // Index of the first tag with this code at or after `from`.
  std::optional<std::size_t> find(int code, std::size_t from = 0) const;

  // Appends a tag whose texts live elsewhere (the document's file buffer), which must outlive the list:
  // used by the reader.
  void appendRaw(int code, std::string_view codeText, std::string_view text);
  void reserve(std::size_t n) { tags_.reserve(n); }

  // Appends a tag made by the program; its text is kept by the list.
  void append(int code, std::string_view text) { insert(tags_.size(), code, std::string(text)); }

  void setNumber(std::size_t i, double value);
  void setInteger(std::size_t i, long long value);
  void setText(std::size_t i, std::string text);
  void insert(std::size_t i, int code, std::string text);
  void insertNumber(std::size_t i, int code, double value);
  void erase(std::size_t i);

  // True once any tag was changed, inserted or erased since the list was read.
  bool modified() const { return modified_; }

  // A list as read and never changed is nothing but its packed tags over the file buffer: a change journal
  // keeps that much (eight bytes a tag, see packedTags) and puts it back with restorePristine, which
  // allocates nothing as long as the list did not lose tags since.
  bool pristine() const { return !modified_ && own_.data() == nullptr; }
  const void* packedTags() const { return tags_.data(); }
  const char* packedBase() const { return base_; }
  static constexpr std::size_t kPackedTagSize = 8;
  void restorePristine(const void* packed, std::size_t count, const char* base);
  // Empties the list for reading its record's tags again with appendRaw: its room stays.
  void clearForRereading() { restorePristine(nullptr, 0, nullptr); }
  // The first byte of the record's values in the file (the texts of a binary file lie elsewhere).
  const char* firstValue() const { return tags_.empty() ? nullptr : base_ + tags_.front().offset; }

 private:
  // One tag in 8 bytes: the offset of its value relative to base_ (file texts) or into own_ (program texts,
  // kOwned set), then the value's length (14 bits), the code (11 bits), the length of the code line (4 bits)
  // and the flags (3 bits). A code or length that does not fit makes a wide tag: code field kWideCode, the
  // real code and length stored in own_ before the text. A changed tag whose code line was not the usual
  // right-aligned one keeps it in own_ right before the value.
  struct Packed {
    std::uint32_t offset;
    std::uint32_t bits;
    std::uint32_t length() const { return bits & 0x3FFF; }
    int code() const { return static_cast<int>((bits >> 14) & 0x7FF); }
    std::uint32_t codeLength() const { return (bits >> 25) & 0xF; }
    std::uint32_t flags() const { return bits >> 29; }
  };
  static constexpr std::uint32_t kMaxLength = 0x3FFF;
  static constexpr int kWideCode = 0x7FF;
  static constexpr std::uint32_t kMaxCodeLength = 0xF;
  static constexpr std::uint32_t kOwned = 1;
  static constexpr std::uint32_t kCrLf = 2;
  static constexpr std::uint32_t kStandardCode = 4;  // the code line is formatCode(code)
  static constexpr std::uint32_t kNumber = kOwned | kCrLf;
  static bool isNumber(const Packed& p) { return (p.flags() & kNumber) == kNumber; }
  static Packed pack(std::uint32_t offset, std::uint32_t length, int code, std::uint32_t codeLength,
                     std::uint32_t flags) {
    return Packed{offset, length | (static_cast<std::uint32_t>(code) << 14) | (codeLength << 25) | (flags << 29)};
  }
  int wideCode(const Packed& p) const;

  // The texts the program made, one after the other, in one block that grows by half.
  class TextStore {
   public:
    TextStore() = default;
    TextStore(const TextStore& other);
    TextStore(TextStore&& other) noexcept;
    TextStore& operator=(TextStore&& other) noexcept;
    TextStore& operator=(const TextStore&) = delete;
    ~TextStore() = default;
    const char* data() const { return data_.get(); }
    std::uint32_t size() const { return size_; }
    // Returns where the text starts; the first block holds at least `firstCapacity` bytes.
    std::uint32_t append(std::string_view text, std::size_t firstCapacity = 0);

   private:
    std::unique_ptr<char[]> data_;
    std::uint32_t size_ = 0;
    std::uint32_t capacity_ = 0;
  };

  // The packed tags in one block, counted in 32 bits: two words instead of a vector's three, in each of a
  // drawing's millions of records (no record holds 4 G tags).
  class PackedTags {
   public:
    PackedTags() = default;
    PackedTags(const PackedTags& other) { assign(other.begin(), other.end()); }
    PackedTags(PackedTags&& other) noexcept
        : data_(std::move(other.data_)), size_(std::exchange(other.size_, 0)), capacity_(std::exchange(other.capacity_, 0)) {}
    PackedTags& operator=(PackedTags&& other) noexcept {
      data_ = std::move(other.data_);
      size_ = std::exchange(other.size_, 0);
      capacity_ = std::exchange(other.capacity_, 0);
      return *this;
    }
    PackedTags& operator=(const PackedTags&) = delete;
    ~PackedTags() = default;

    std::size_t size() const { return size_; }
    std::size_t capacity() const { return capacity_; }
    bool empty() const { return size_ == 0; }
    const Packed* data() const { return data_.get(); }
    const Packed* begin() const { return data_.get(); }
    const Packed* end() const { return data_.get() + size_; }
    Packed& operator[](std::size_t i) { return data_[i]; }
    const Packed& operator[](std::size_t i) const { return data_[i]; }
    Packed& front() { return data_[0]; }
    const Packed& front() const { return data_[0]; }

    void reserve(std::size_t n);
    void push_back(Packed p) {
      if (size_ == capacity_) reserve(capacity_ < 4 ? 4 : std::size_t{capacity_} * 2);
      data_[size_++] = p;
    }
    void insert(std::size_t i, Packed p);
    void erase(std::size_t i);
    void clear() { size_ = 0; }  // keeps the room
    void assign(const Packed* first, const Packed* last);

   private:
    std::unique_ptr<Packed[]> data_;
    std::uint32_t size_ = 0;
    std::uint32_t capacity_ = 0;
  };

  Packed packOwned(int code, std::string_view text);
  Packed packNumber(int code, double value);
  void insertPacked(std::size_t i, Packed p);
  // Room for the first block of own_: see packOwned.
  std::size_t firstCapacity() const;
  // Puts a new value in place of tag i's, keeping its code line: made by `pack` from the code.
  template <class Pack>
  void replaceValue(std::size_t i, const Pack& pack);
  void replaceText(std::size_t i, std::string_view text);
  double numberAt(const Packed& p) const;
  std::string_view spelled(const Packed& p) const;

  PackedTags tags_;
  const char* base_ = nullptr;
  TextStore own_;
  // The texts of kept numbers that someone asked for, 32 bytes a slot (the first holding the length, 0
  // while unspelled), one slot for every 8 bytes of own_, after a first slot that holds the number of
  // slots; made on first asking. own_ only grows while it lives, so a spelled slot stays right until own_
  // is replaced.
  mutable std::unique_ptr<char[]> spelled_;
  bool modified_ = false;
};

// The code line a CAD program writes for a group code: right-aligned in three columns ("  0", " 10", "1001").
std::string formatCode(int code);
// The same without allocating, for the codes DXF knows (0 to 1071); empty for any other.
std::string_view standardCodeLine(int code);

// The shortest text that reads back to exactly `value`, always with a decimal point or an exponent
// so that other readers take it for a real ("2561234.0", "0.1", "1e-300").
std::string formatNumber(double value);
// The same into `out`, which has room for kMaxNumberText bytes; returns the length.
inline constexpr std::size_t kMaxNumberText = 32;
std::size_t formatNumberInto(char* out, double value);

// The text without the blanks and tabs around it, as values are compared where a file's writer may have
// padded them ("SECTION ", "     6").
// Inline: every value read passes here, and most have nothing to trim.
inline std::string_view trimBlanks(std::string_view s) {
  while (!s.empty() && (s.front() == ' ' || s.front() == '\t')) s.remove_prefix(1);
  while (!s.empty() && (s.back() == ' ' || s.back() == '\t')) s.remove_suffix(1);
  return s;
}

// Equality of the short texts compared for every tag (code lines, line endings), done in place: a call into
// the library's comparison costs more than the few bytes compared.
inline bool sameShortText(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i)
    if (a[i] != b[i]) return false;
  return true;
}

// Reads a DXF number: blanks around it are allowed, anything else is not.
std::optional<double> parseNumber(std::string_view text);
std::optional<long long> parseInteger(std::string_view text);

}  // namespace dxf
