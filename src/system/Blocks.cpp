#include "system/Blocks.h"

#include <algorithm>
#include <cstring>

namespace tessary {

BlockReader::BlockReader(File& file, std::uint64_t begin, std::uint64_t end)
    : file_(file), position_(begin), end_(end) {
  if (const Failure failure = file_.Seek(begin)) Fail(failure);
}

bool BlockReader::More() {
  if (at_ > 0) {
    const char* const rest = First() + at_;
    position_ += at_;
    filled_ -= at_;
    at_ = 0;
    std::memmove(First(), rest, filled_);
  }
  const std::size_t room =
      static_cast<std::size_t>(std::min<std::uint64_t>(kBlockSize - filled_, end_ - position_ - filled_));
  if (room == 0) return false;
  const Result<std::size_t> got = file_.Read(First() + filled_, room);
  if (!got.ok()) Fail(got.failure);
  if (got.value == 0) end_ = position_ + filled_;
  filled_ += got.value;
  return got.value > 0;
}

void BlockReader::ReturnTo(std::uint64_t position) {
  if (position >= position_ && position <= position_ + filled_) {
    at_ = static_cast<std::size_t>(position - position_);
    return;
  }
  at_ = filled_ = 0;
  position_ = position;
  if (const Failure failure = file_.Seek(position)) Fail(failure);
}

void BlockReader::Fail(const Failure& failure) {
  if (!failure_) failure_ = failure;
  end_ = position_ + filled_;
}

void BlockWriter::Append(std::string_view bytes) {
  while (!bytes.empty()) {
    const std::size_t size = std::min(bytes.size(), kReserveSize);
    std::memcpy(Reserve(), bytes.data(), size);
    Commit(size);
    bytes.remove_prefix(size);
  }
}

char* BlockWriter::Reserve() {
  if (filled_ >= kWriteSize) Write(kWriteSize - written_ % kWriteSize);  // up to the end of a page
  return First() + filled_;
}

void BlockWriter::ReturnTo(std::uint64_t position) {
  if (position >= written_) {
    filled_ = static_cast<std::size_t>(position - written_);
    return;
  }
  filled_ = 0;
  written_ = position;
  if (!failure_) failure_ = file_.Seek(position);
  if (!failure_) failure_ = file_.Truncate();
}

Failure BlockWriter::Finish() {
  Write(filled_);
  return failure_;
}

void BlockWriter::Write(std::size_t size) {
  if (!failure_) failure_ = file_.Write({First(), size});
  written_ += size;
  filled_ -= size;
  std::memmove(First(), First() + size, filled_);
}

}  // namespace tessary
