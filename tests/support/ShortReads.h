// A forwarding wrapper whose files give few bytes at a time, as a pipe would.
#pragma once

#include <algorithm>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/Files.h"

namespace tessary {

class ShortReads : public Files {
 public:
  /// Each read gives up to `most` bytes, after a call of `onRead` if there is one.
  ShortReads(Files& inner, std::size_t most, std::function<void()> onRead = {})
      : inner_(inner), most_(most), onRead_(std::move(onRead)) {}

  Result<std::unique_ptr<File>> Open(const std::string& path, OpenMode mode) override {
    auto opened = inner_.Open(path, mode);
    if (!opened.ok() || mode != OpenMode::Read) return opened;
    return std::unique_ptr<File>(std::make_unique<ShortFile>(std::move(opened.value), *this));
  }
  std::optional<FileInfo> Find(const std::string& path) override { return inner_.Find(path); }
  Result<std::vector<FileInfo>> List(const std::string& folder) override { return inner_.List(folder); }
  Failure Replace(const std::string& path, std::string_view bytes) override {
    return inner_.Replace(path, bytes);
  }
  Failure Copy(const std::string& from, const std::string& to) override { return inner_.Copy(from, to); }
  Failure Remove(const std::string& path) override { return inner_.Remove(path); }
  Failure RemoveFolder(const std::string& path) override { return inner_.RemoveFolder(path); }
  Failure MakeFolder(const std::string& path) override { return inner_.MakeFolder(path); }
  Result<std::unique_ptr<FileLock>> Lock(const std::string& path) override { return inner_.Lock(path); }
  std::vector<std::string> Drives() override { return inner_.Drives(); }

 private:
  class ShortFile : public File {
   public:
    ShortFile(std::unique_ptr<File> inner, const ShortReads& owner) : inner_(std::move(inner)), owner_(owner) {}
    Result<std::size_t> Read(char* buffer, std::size_t size) override {
      if (owner_.onRead_) owner_.onRead_();
      return inner_->Read(buffer, std::min(size, owner_.most_));
    }
    Failure Write(std::string_view bytes) override { return inner_->Write(bytes); }
    Failure Seek(std::uint64_t position) override { return inner_->Seek(position); }
    Failure Truncate() override { return inner_->Truncate(); }
    Result<std::uint64_t> Size() override { return inner_->Size(); }
    Failure Close() override { return inner_->Close(); }

   private:
    std::unique_ptr<File> inner_;
    const ShortReads& owner_;
  };

  Files& inner_;
  std::size_t most_;
  std::function<void()> onRead_;
};

}  // namespace tessary
