#include "host/dxf/EntityWriter.h"

#include <algorithm>
#include <cerrno>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <optional>
#include <string>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <vector>

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
    if (bytes.size() != codeLength + eol.size() + tags.text(i).size() || !sameShortText(bytes.substr(codeLength, eol.size()), eol))
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
            !sameShortText(std::string_view(end, eol.size()), eol))
          break;
        end = next.data() + next.size();
      }
      const std::string_view piece(run.data(), static_cast<std::size_t>(end - run.data()));
      out.write(piece);
      out.write(Sink::lineEnd(piece, eol));  // the last value may end in a carriage return of its own
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


namespace {

// Records a helper thread writes at a time: enough that handing a stretch over costs nothing next to
// spelling it, few enough that the stretches waiting for their turn take little memory.
constexpr std::size_t kStretch = 2048;
// Stretches the helper may be ahead of this thread; bounds the memory they hold.
constexpr std::size_t kAhead = 4;

void writeStretch(Sink& out, const std::deque<Entity>& records, std::size_t stretch, const TagStyle& style) {
  const std::size_t end = std::min(records.size(), (stretch + 1) * kStretch);
  for (std::size_t i = stretch * kStretch; i < end; ++i) writeEntity(out, records[i], style);
}

// The helper's side: whichever stretch is next when it is free, into a buffer of its own, at most kAhead
// stretches ahead of this thread. This thread writes the next stretch itself when the helper has not taken
// it, so the work splits by how fast each side gets on, not half and half.
class StretchHelper {
 public:
  StretchHelper(const std::deque<Entity>& records, const TagStyle& style, std::size_t stretches)
      : records_(records), style_(style), stretches_(stretches), done_(stretches), thread_([this] { run(); }) {}
  StretchHelper(const StretchHelper&) = delete;
  StretchHelper& operator=(const StretchHelper&) = delete;
  ~StretchHelper() {
    {
      std::lock_guard<std::mutex> lock(mutex_);
      stop_ = true;
    }
    changed_.notify_all();
    thread_.join();
  }

  // Called in order for every stretch: true when this thread is to write it itself (the helper did not
  // take it, or could not write it: it ran out of memory); otherwise `bytes` holds what the helper wrote.
  bool mine(std::size_t stretch, std::string& bytes) {
    std::unique_lock<std::mutex> lock(mutex_);
    if (next_ == stretch) {
      next_ = stretch + 1;
      return true;
    }
    changed_.wait(lock, [&] { return done_[stretch].has_value() || failed_; });
    if (!done_[stretch]) return true;
    bytes = std::move(*done_[stretch]);
    done_[stretch].reset();
    return false;
  }
  // This thread has written every stretch before `stretch`.
  void reached(std::size_t stretch) {
    {
      std::lock_guard<std::mutex> lock(mutex_);
      reached_ = stretch;
    }
    changed_.notify_all();
  }

 private:
  void run() {
    try {
      for (;;) {
        std::size_t s = 0;
        {
          std::unique_lock<std::mutex> lock(mutex_);
          changed_.wait(lock, [&] { return stop_ || next_ >= stretches_ || next_ < reached_ + kAhead; });
          if (stop_ || next_ >= stretches_) return;
          s = next_++;
        }
        // One buffer for all stretches (a fresh one would be cleared and faulted in each time); each
        // stretch leaves it as a copy of its exact size.
        buffer_.clear();
        writeStretch(buffer_, records_, s, style_);
        std::string bytes(buffer_.view());
        {
          std::lock_guard<std::mutex> lock(mutex_);
          done_[s] = std::move(bytes);
        }
        changed_.notify_all();
      }
    } catch (...) {
      {
        std::lock_guard<std::mutex> lock(mutex_);
        failed_ = true;
      }
      changed_.notify_all();
    }
  }

  const std::deque<Entity>& records_;
  const TagStyle& style_;
  const std::size_t stretches_;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::vector<std::optional<std::string>> done_;
  Sink buffer_;              // the helper's own
  std::size_t next_ = 0;     // the first stretch nobody took yet
  std::size_t reached_ = 0;  // stretches this thread has written
  bool stop_ = false;
  bool failed_ = false;
  std::thread thread_;  // last: starts once everything above is ready
};

}  // namespace

void writeRecords(Sink& out, const std::deque<Entity>& records, const TagStyle& style) {
  const std::size_t stretches = (records.size() + kStretch - 1) / kStretch;
  std::optional<StretchHelper> helper;
  if (stretches >= 4 && std::thread::hardware_concurrency() >= 2) {
    try {
      helper.emplace(records, style, stretches);
    } catch (const std::system_error&) {
      // No thread to be had: one core writes it all.
    }
  }
  if (!helper) {
    for (const Entity& e : records) writeEntity(out, e, style);
    return;
  }
  std::string bytes;
  for (std::size_t s = 0; s < stretches; ++s) {
    if (helper->mine(s, bytes))
      writeStretch(out, records, s, style);
    else
      out.write(bytes);
    helper->reached(s + 1);
  }
}

}  // namespace dxf
