#include "host/dxf/EntityWriter.h"

#include <algorithm>
#include <cerrno>
#include <unistd.h>

namespace dxf {

bool Sink::flush() {
  if (fd_ < 0 || failed()) return !failed();
  const char* p = buffer_.data();
  std::size_t left = used_;
  while (left > 0) {
    const ssize_t n = ::write(fd_, p, left);
    if (n < 0) {
      if (errno == EINTR) continue;
      errno_ = errno;
      break;
    }
    p += n;
    left -= static_cast<std::size_t>(n);
  }
  used_ = 0;
  return !failed();
}

void Sink::makeRoom(std::size_t n) {
  if (fd_ >= 0) {
    flush();
    if (n <= buffer_.size()) return;
    // After a failure the output goes nowhere; keep the room small.
    if (failed()) {
      buffer_.resize(n);
      return;
    }
  }
  buffer_.resize(std::max({used_ + n, buffer_.size() * 2, kChunk}));
}

namespace {

// The entity's own bytes, without its children's, when they can still be had from the file.
bool ownSource(const Entity& e, std::string_view& own) {
  if (e.source.empty() || e.tags.modified()) return false;
  if (e.children.empty()) {
    own = e.source;
    return true;
  }
  const Entity& first = e.children.front();
  if (first.source.empty() || first.source.data() < e.source.data() ||
      first.source.data() > e.source.data() + e.source.size())
    return false;
  own = e.source.substr(0, static_cast<std::size_t>(first.source.data() - e.source.data()));
  return true;
}

void writeOwnTags(Sink& out, const Entity& e, const TagStyle& style) {
  if (style.binary) {
    std::string bytes;
    appendBinaryTag(bytes, 0, e.type, *style.binary);
    for (std::size_t i = 0; i < e.tags.size(); ++i) appendBinaryTag(bytes, e.tags.code(i), e.tags.text(i), *style.binary);
    out.write(bytes);
    return;
  }
  const std::string_view eol = style.eol;
  std::string_view zero = "  0";
  if (!e.source.empty()) {
    // Keep the spelling of the 0 code line the record had.
    zero = e.source.substr(0, e.source.find('\n'));
    if (!zero.empty() && zero.back() == '\r') zero.remove_suffix(1);
  }
  out.writeTag(zero, e.type, eol);
  const TagList& tags = e.tags;
  const std::size_t n = tags.size();
  // The tag's bytes in the file where they are what writeTag would write: its code line, the drawing's
  // line ending, its value.
  auto asWritten = [&](std::size_t i) {
    const std::string_view bytes = tags.fileBytes(i);
    if (bytes.empty()) return bytes;
    const std::size_t codeLength = tags.codeText(i).size();
    if (bytes.size() != codeLength + eol.size() + tags.text(i).size() || bytes.substr(codeLength, eol.size()) != eol)
      return std::string_view{};
    return bytes;
  };
  for (std::size_t i = 0; i < n;) {
    // A run of such tags one after the other, each line ending as the drawing's: one piece.
    if (const std::string_view run = asWritten(i); !run.empty()) {
      const char* end = run.data() + run.size();
      for (++i; i < n; ++i) {
        const std::string_view next = asWritten(i);
        if (next.empty() || next.data() - end != static_cast<std::ptrdiff_t>(eol.size()) ||
            std::string_view(end, eol.size()) != eol)
          break;
        end = next.data() + next.size();
      }
      out.write(std::string_view(run.data(), static_cast<std::size_t>(end - run.data())));
      out.write(eol);
      continue;
    }
    std::string_view code = tags.codeText(i);
    std::string made;
    if (code.empty()) {
      code = standardCodeLine(tags.code(i));
      if (code.empty()) code = made = formatCode(tags.code(i));
    }
    double number = 0.0;
    if (tags.keptNumber(i, number))
      out.writeNumberTag(code, number, eol);
    else
      out.writeTag(code, tags.text(i), eol);
    ++i;
  }
}

// A child that recovery made (a missing SEQEND) has no bytes in the file: its parent's bytes lack it.
bool hasMadeChild(const Entity& e) {
  for (const Entity& c : e.children)
    if (c.source.empty()) return true;
  return false;
}

}  // namespace

void writeEntity(Sink& out, const Entity& entity, const TagStyle& style) {
  if (entity.erased) return;
  if (!entity.source.empty() && !entity.modified() && !hasMadeChild(entity)) {
    out.write(entity.source);
    return;
  }
  std::string_view own;
  if (ownSource(entity, own))
    out.write(own);
  else
    writeOwnTags(out, entity, style);
  for (const Entity& child : entity.children) writeEntity(out, child, style);
}

}  // namespace dxf
