#include "host/dxf/BinaryTags.h"

#include "host/dxf/TagList.h"

#include <bit>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>

namespace dxf {

namespace {

// The binary form of a group code's value.
enum class BinaryValue { Unknown, String, Double, Int16, Int32, Int64, Byte, Chunk };

BinaryValue binaryValue(int code) {
  if ((code >= 310 && code <= 319) || code == 1004) return BinaryValue::Chunk;
  if (code >= 290 && code <= 299) return BinaryValue::Byte;
  if (code >= 160 && code <= 169) return BinaryValue::Int64;
  if ((code >= 90 && code <= 99) || (code >= 420 && code <= 429) || (code >= 440 && code <= 459) || code == 1071)
    return BinaryValue::Int32;
  switch (valueKind(code)) {
    case ValueKind::Text: return BinaryValue::String;
    case ValueKind::Real: return BinaryValue::Double;
    case ValueKind::Integer: return BinaryValue::Int16;
    case ValueKind::Unknown: break;
  }
  return BinaryValue::Unknown;
}

std::uint64_t littleEndian(const unsigned char* p, int bytes) {
  std::uint64_t v = 0;
  for (int i = bytes - 1; i >= 0; --i) v = (v << 8) | p[i];
  return v;
}

void appendLittleEndian(std::string& out, std::uint64_t v, int bytes) {
  for (int i = 0; i < bytes; ++i) out += static_cast<char>((v >> (8 * i)) & 0xFF);
}

// A NaN keeps its exact bits in this spelling, which no number reader accepts: the layers above see a
// value that is no number (as they would in a text file), and writing gives the same eight bytes back.
constexpr std::string_view kNanPrefix = "nan:";

void appendDouble(std::string& texts, double v) {
  if (std::isnan(v)) {
    char hex[17];
    auto [end, ec] = std::to_chars(hex, hex + 16, std::bit_cast<std::uint64_t>(v), 16);
    texts += kNanPrefix;
    texts.append(16 - static_cast<std::size_t>(end - hex), '0');
    texts.append(hex, end);
    return;
  }
  // The shortest text that reads back to the same double: -0.0 and infinities included.
  char buf[64];
  auto [end, ec] = std::to_chars(buf, buf + sizeof buf, v);
  texts.append(buf, end);
}

double doubleOf(std::string_view text) {
  if (text.substr(0, kNanPrefix.size()) == kNanPrefix) {
    std::uint64_t bits = 0;
    const std::string_view hex = text.substr(kNanPrefix.size());
    std::from_chars(hex.data(), hex.data() + hex.size(), bits, 16);
    return std::bit_cast<double>(bits);
  }
  return parseNumber(text).value_or(0.0);
}

constexpr char kHexDigits[] = "0123456789ABCDEF";

int hexValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return -1;
}

}  // namespace

BinaryTagReader::BinaryTagReader(std::string_view file, std::string& texts, RepairLog* repairs) : file_(file) {
  decodeAll(texts, repairs);
  texts_ = texts;
}

void BinaryTagReader::decodeAll(std::string& texts, RepairLog* repairs) {
  const auto* p = reinterpret_cast<const unsigned char*>(file_.data());
  const std::size_t n = file_.size();
  std::size_t pos = kBinarySentinel.size();
  // The first tag tells the code width: "0 SECTION" starts with two zero bytes in the two-byte form, a
  // comment 999 with E7 03; in the one-byte form the zero is followed by the text.
  if (n >= pos + 2 && !(p[pos] == 0 && p[pos + 1] == 0) && !(p[pos] == 0xE7 && p[pos + 1] == 0x03))
    width_ = CodeWidth::OneByte;
  tags_.reserve(n / 12);
  texts.reserve(n + n / 2);

  std::string problem;
  std::size_t start = pos;
  auto need = [&](std::size_t bytes) { return n - pos >= bytes; };
  while (pos < n) {
    start = pos;
    int code = 0;
    if (width_ == CodeWidth::OneByte && p[pos] != 255) {
      code = p[pos++];
    } else {
      if (width_ == CodeWidth::OneByte) ++pos;
      if (!need(2)) {
        problem = "the file ends inside a group code";
        break;
      }
      code = static_cast<std::int16_t>(littleEndian(p + pos, 2));
      pos += 2;
    }
    const BinaryValue kind = binaryValue(code);
    if (kind == BinaryValue::Unknown) {
      problem = "unknown group code " + std::to_string(code);
      break;
    }
    const std::size_t textOffset = texts.size();
    auto fixed = [&](int bytes) {
      if (!need(static_cast<std::size_t>(bytes))) return false;
      const std::uint64_t raw = littleEndian(p + pos, bytes);
      pos += static_cast<std::size_t>(bytes);
      char buf[32];
      std::to_chars_result r{};
      switch (bytes) {
        case 1: r = std::to_chars(buf, buf + sizeof buf, static_cast<unsigned>(raw)); break;
        case 2: r = std::to_chars(buf, buf + sizeof buf, static_cast<std::int16_t>(raw)); break;
        case 4: r = std::to_chars(buf, buf + sizeof buf, static_cast<std::int32_t>(raw)); break;
        default: r = std::to_chars(buf, buf + sizeof buf, static_cast<std::int64_t>(raw)); break;
      }
      texts.append(buf, r.ptr);
      return true;
    };
    bool complete = true;
    switch (kind) {
      case BinaryValue::String: {
        const void* nul = std::memchr(p + pos, 0, n - pos);
        if (!nul) {
          complete = false;
          break;
        }
        const std::size_t length = static_cast<std::size_t>(static_cast<const unsigned char*>(nul) - (p + pos));
        texts.append(file_.substr(pos, length));
        pos += length + 1;
        break;
      }
      case BinaryValue::Double:
        complete = need(8);
        if (complete) {
          appendDouble(texts, std::bit_cast<double>(littleEndian(p + pos, 8)));
          pos += 8;
        }
        break;
      case BinaryValue::Int16: complete = fixed(2); break;
      case BinaryValue::Int32: complete = fixed(4); break;
      case BinaryValue::Int64: complete = fixed(8); break;
      case BinaryValue::Byte: complete = fixed(1); break;
      case BinaryValue::Chunk: {
        complete = need(1) && n - pos - 1 >= p[pos];
        if (!complete) break;
        const std::size_t length = p[pos++];
        for (std::size_t i = 0; i < length; ++i) {
          texts += kHexDigits[p[pos + i] >> 4];
          texts += kHexDigits[p[pos + i] & 0xF];
        }
        pos += length;
        break;
      }
      case BinaryValue::Unknown: break;
    }
    if (!complete) {
      problem = "the file ends inside the value of group code " + std::to_string(code);
      break;
    }
    if (texts.size() > std::numeric_limits<std::uint32_t>::max()) {
      problem = "the drawing is too large";
      break;
    }
    tags_.push_back(Decoded{code, static_cast<std::uint32_t>(textOffset),
                            static_cast<std::uint32_t>(texts.size() - textOffset), static_cast<std::uint32_t>(start)});
    // EOF ends the drawing; whatever follows it is kept as it is, unread.
    if (code == 0 && std::string_view(texts).substr(textOffset) == "EOF") break;
  }
  end_ = problem.empty() ? pos : start;
  if (problem.empty()) return;
  if (repairs)
    repairs->note("damaged end of a binary file dropped");
  else
    error_ = "byte " + std::to_string(start) + ": " + problem;
  // The damage stays unread; the tags before it are read as usual.
  pending_ = std::move(error_);
  error_.clear();
}

const RawTag* BinaryTagReader::peek() {
  if (ready_) return &current_;
  if (next_ >= tags_.size()) {
    if (error_.empty() && !pending_.empty()) error_ = std::move(pending_);
    return nullptr;
  }
  const Decoded& d = tags_[next_];
  current_.code = d.code;
  current_.codeText = {};
  current_.text = texts_.substr(d.textOffset, d.textLength);
  current_.start = file_.data() + d.fileOffset;
  current_.line = d.fileOffset;
  ready_ = true;
  return &current_;
}

void BinaryTagReader::advance() {
  if (ready_) ++next_;
  ready_ = false;
}

const char* BinaryTagReader::position() const {
  return file_.data() + (next_ < tags_.size() ? tags_[next_].fileOffset : end_);
}

std::size_t BinaryTagReader::line() const { return next_ < tags_.size() ? tags_[next_].fileOffset : end_; }

void BinaryTagReader::fail(std::size_t offset, std::string_view message) {
  if (error_.empty()) error_ = "byte " + std::to_string(offset) + ": " + std::string(message);
  next_ = tags_.size();
  ready_ = false;
}

void appendBinaryTag(std::string& out, int code, std::string_view text, CodeWidth width) {
  if (width == CodeWidth::OneByte && code >= 0 && code < 255) {
    out += static_cast<char>(code);
  } else {
    if (width == CodeWidth::OneByte) out += static_cast<char>(255);
    appendLittleEndian(out, static_cast<std::uint16_t>(code), 2);
  }
  auto integer = [&](int bytes) {
    appendLittleEndian(out, static_cast<std::uint64_t>(parseInteger(text).value_or(0)), bytes);
  };
  switch (binaryValue(code)) {
    case BinaryValue::Double: appendLittleEndian(out, std::bit_cast<std::uint64_t>(doubleOf(text)), 8); break;
    case BinaryValue::Int16: integer(2); break;
    case BinaryValue::Int32: integer(4); break;
    case BinaryValue::Int64: integer(8); break;
    case BinaryValue::Byte: integer(1); break;
    case BinaryValue::Chunk: {
      // At most 127 bytes a chunk in what CAD programs write; the length byte holds 255.
      std::string bytes;
      for (std::size_t i = 0; i + 1 < text.size() && bytes.size() < 255; i += 2) {
        const int hi = hexValue(text[i]), lo = hexValue(text[i + 1]);
        if (hi < 0 || lo < 0) break;
        bytes += static_cast<char>(hi * 16 + lo);
      }
      out += static_cast<char>(bytes.size());
      out += bytes;
      break;
    }
    case BinaryValue::String:
    case BinaryValue::Unknown:
      out.append(text.substr(0, text.find('\0')));
      out += '\0';
      break;
  }
}

}  // namespace dxf
