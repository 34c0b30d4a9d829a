// A document on its way through memory: read and written in large blocks, and turned back to a place that was
// passed before, without holding more than one block of it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

#include "host/Files.h"

namespace tessary {

inline constexpr std::size_t kBlockSize = 256 * 1024;   ///< stays in the cache between reading and writing
inline constexpr std::size_t kWriteSize = 512 * 1024;   ///< written at a time: larger writes cost less a byte
inline constexpr std::size_t kReserveSize = 64 * 1024;  ///< the most that a writer makes room for at a time

/// Memory for bytes of a file. When they lie within cache lines as they do in the system's copy of the file,
/// copying between the two takes half the time.
inline constexpr std::size_t kPageSize = 4096;
template <std::size_t Size>
struct alignas(kPageSize) Pages {
  char bytes[Size];
};

/// Reads a range of a file through a window that moves over it. After a failure the range reads as if it ended
/// where the failure happened; whoever reads asks for the failure at the end.
class BlockReader {
 public:
  /// Reads the bytes from `begin` up to `end`, positions in `file`, which must outlive the reader.
  BlockReader(File& file, std::uint64_t begin, std::uint64_t end);

  /// The bytes at hand that have not been skipped. Valid until More or ReturnTo, whatever they return.
  [[nodiscard]] std::string_view window() const { return {First() + at_, filled_ - at_}; }
  /// Drops the first `count` bytes of the window.
  void Skip(std::size_t count) { at_ += count; }
  /// Puts more bytes behind those of the window, which moves in memory. False when the range is at its end,
  /// when reading failed, or when the window is as large as a block.
  bool More();
  /// True when nothing follows the window.
  [[nodiscard]] bool AtEnd() const { return position_ + filled_ == end_; }
  /// The position in the file at which the window begins.
  [[nodiscard]] std::uint64_t Position() const { return position_ + at_; }
  /// Lets the window begin at a position that Position gave earlier.
  void ReturnTo(std::uint64_t position);

  [[nodiscard]] const Failure& failure() const { return failure_; }

 private:
  using Block = Pages<kPageSize + kBlockSize>;

  [[nodiscard]] char* First() const { return block_->bytes + position_ % kPageSize; }
  void Fail(const Failure& failure);

  File& file_;
  std::unique_ptr<Block> block_ = std::make_unique_for_overwrite<Block>();
  std::size_t at_ = 0, filled_ = 0;
  std::uint64_t position_;  ///< of the block's first byte in the file
  std::uint64_t end_;
  Failure failure_;
};

/// Writes a file from its start. After a failure nothing more is written.
class BlockWriter {
 public:
  /// `file` is empty and outlives the writer.
  explicit BlockWriter(File& file) : file_(file) {}

  void Append(std::string_view bytes);
  /// Room for kReserveSize bytes at the end of what has been written; Commit says how many of them were used.
  char* Reserve();
  void Commit(std::size_t size) { filled_ += size; }

  [[nodiscard]] std::uint64_t Position() const { return written_ + filled_; }
  /// Drops everything behind a position that Position gave earlier.
  void ReturnTo(std::uint64_t position);
  /// Writes what is still held back. Returns the first failure of all calls, if there was one.
  Failure Finish();
  /// The first failure so far.
  [[nodiscard]] const Failure& failure() const { return failure_; }

 private:
  using Block = Pages<kPageSize + kWriteSize + kReserveSize>;

  /// Half a page apart from the places of a reader's bytes: processors that see a page's offset alone at first
  /// take a copy to a place just behind for one onto itself, and wait.
  [[nodiscard]] char* First() const { return block_->bytes + kPageSize / 2; }
  void Write(std::size_t size);

  File& file_;
  std::unique_ptr<Block> block_ = std::make_unique_for_overwrite<Block>();
  std::size_t filled_ = 0;
  std::uint64_t written_ = 0;
  Failure failure_;
};

}  // namespace tessary
