#include "host/dxf/EntityWriter.h"

#include <cerrno>
#include <unistd.h>

namespace dxf {

bool Sink::flush() {
  if (fd_ < 0 || failed()) return !failed();
  const char* p = buffer_.data();
  std::size_t left = buffer_.size();
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
  buffer_.clear();
  return !failed();
}

namespace {

void writeLine(Sink& out, std::string_view text, std::string_view eol) {
  out.write(text);
  out.write(eol);
}

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

void writeOwnTags(Sink& out, const Entity& e, std::string_view eol) {
  std::string_view zero = "  0";
  if (!e.source.empty()) {
    // Keep the spelling of the 0 code line the record had.
    zero = e.source.substr(0, e.source.find('\n'));
    if (!zero.empty() && zero.back() == '\r') zero.remove_suffix(1);
  }
  writeLine(out, zero, eol);
  writeLine(out, e.type, eol);
  for (std::size_t i = 0; i < e.tags.size(); ++i) {
    const std::string_view code = e.tags.codeText(i);
    if (code.empty())
      writeLine(out, formatCode(e.tags.code(i)), eol);
    else
      writeLine(out, code, eol);
    writeLine(out, e.tags.text(i), eol);
  }
}

}  // namespace

void writeEntity(Sink& out, const Entity& entity, std::string_view eol) {
  if (entity.erased) return;
  if (!entity.source.empty() && !entity.modified()) {
    out.write(entity.source);
    return;
  }
  std::string_view own;
  if (ownSource(entity, own))
    out.write(own);
  else
    writeOwnTags(out, entity, eol);
  for (const Entity& child : entity.children) writeEntity(out, child, eol);
}

}  // namespace dxf
