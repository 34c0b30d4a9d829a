#include "script/library/TextStream.h"

#include <algorithm>

#include "script/library/Arguments.h"
#include "script/library/FilePaths.h"
#include "script/library/Objects.h"
#include "script/library/Windows1252.h"

namespace tessary::script {
namespace {

// Enough that a loop of WriteLine costs few calls of the machine.
constexpr std::size_t kBufferSize = 64 * 1024;
constexpr std::string_view kByteOrderMark = "\xFF\xFE";

class TextStream final : public NativeObject {
 public:
  TextStream(FileSystem& files, std::string path, StreamMode mode, bool unicode)
      : files_(files), path_(std::move(path)), mode_(mode), unicode_(unicode) {
    if (mode == StreamMode::Read) {
      Load();
    } else if (mode == StreamMode::Write || !files_.Find(path_)) {
      Check(files_.Write(path_, unicode_ ? kByteOrderMark : std::string_view()));
    }
  }
  ~TextStream() override {
    if (open_) Flush();  // nobody is left to hear of an error
  }
  [[nodiscard]] std::string ClassName() const override { return "TextStream"; }

  static Value AtEndOfLine(Object& self, Context&, Arguments) {
    const TextStream& stream = Reader(self);
    return Value::Boolean(stream.AtEnd() || stream.text_[stream.at_] == u'\n' ||
                          stream.text_[stream.at_] == u'\r');
  }
  static Value AtEndOfStream(Object& self, Context&, Arguments) { return Value::Boolean(Reader(self).AtEnd()); }
  static Value Close(Object& self, Context&, Arguments) {
    auto& stream = As<TextStream>(self);
    if (!stream.open_) return {};
    stream.open_ = false;
    Check(stream.Flush());
    return {};
  }
  static Value Column(Object& self, Context&, Arguments) { return LongOf(Open(self).column_); }
  static Value Line(Object& self, Context&, Arguments) { return LongOf(Open(self).line_); }

  static Value Read(Object& self, Context&, Arguments arguments) {
    return Reader(self).Take(CountOf(arguments[0]));
  }
  static Value ReadAll(Object& self, Context&, Arguments) { return Reader(self).Take(std::u16string::npos); }
  static Value ReadLine(Object& self, Context&, Arguments) {
    TextStream& stream = Reader(self);
    const std::size_t start = stream.at_;
    std::size_t end = start + stream.RestOfLine();
    stream.Advance(end - start);
    if (end > start && stream.text_[end - 1] == u'\n') --end;
    if (end > start && stream.text_[end - 1] == u'\r') --end;
    return Value::String(ToUtf8(std::u16string_view(stream.text_).substr(start, end - start)));
  }
  static Value Skip(Object& self, Context&, Arguments arguments) {
    TextStream& stream = Reader(self);
    const std::size_t count = CountOf(arguments[0]);
    if (count > stream.text_.size() - stream.at_) Raise(kInputPastEnd);
    stream.Advance(count);
    return {};
  }
  static Value SkipLine(Object& self, Context&, Arguments) {
    TextStream& stream = Reader(self);
    stream.Advance(stream.RestOfLine());
    return {};
  }

  static Value Write(Object& self, Context& context, Arguments arguments) {
    Writer(self).PutText(TextArgument(context, arguments[0]));
    return {};
  }
  static Value WriteLine(Object& self, Context& context, Arguments arguments) {
    Writer(self).PutText((Given(arguments, 0) ? TextArgument(context, arguments[0]) : std::string()) + "\r\n");
    return {};
  }
  static Value WriteBlankLines(Object& self, Context&, Arguments arguments) {
    TextStream& stream = Writer(self);
    for (std::size_t left = CountOf(arguments[0]); left > 0; --left) stream.PutText("\r\n");
    return {};
  }

 protected:
  [[nodiscard]] std::span<const Member> Members() const override;

 private:
  static TextStream& Open(Object& self) {
    auto& stream = As<TextStream>(self);
    if (!stream.open_) Raise(kObjectNotSet);
    return stream;
  }
  static TextStream& Reader(Object& self) {
    TextStream& stream = Open(self);
    if (stream.mode_ != StreamMode::Read) Raise(kBadFileMode);
    return stream;
  }
  static TextStream& Writer(Object& self) {
    TextStream& stream = Open(self);
    if (stream.mode_ == StreamMode::Read) Raise(kBadFileMode);
    return stream;
  }
  static std::size_t CountOf(const Value& value) {
    const std::int32_t count = ToLong(value);
    if (count < 0) Raise(kInvalidCall);
    return static_cast<std::size_t>(count);
  }

  void Load() {
    std::string bytes;
    Check(files_.Read(path_, bytes));
    CheckTextSize(bytes.size());
    if (unicode_ && !bytes.starts_with(kByteOrderMark)) bytes.insert(0, kByteOrderMark);
    text_ = DecodeFile(bytes);
  }

  [[nodiscard]] bool AtEnd() const { return at_ == text_.size(); }

  // The units up to the next line feed and with it; raises 62 at the end of the file.
  [[nodiscard]] std::size_t RestOfLine() const {
    if (AtEnd()) Raise(kInputPastEnd);
    const std::size_t end = text_.find(u'\n', at_);
    return (end == std::u16string::npos ? text_.size() : end + 1) - at_;
  }

  Value Take(std::size_t count) {
    if (AtEnd() && count > 0) Raise(kInputPastEnd);
    const std::size_t start = at_;
    Advance(std::min(count, text_.size() - at_));
    return Text8(ToUtf8(std::u16string_view(text_).substr(start, at_ - start)));
  }

  void Advance(std::size_t count) {
    CountLines(std::u16string_view(text_).substr(at_, count));
    at_ += count;
  }

  void CountLines(std::u16string_view passed) {
    for (const char16_t unit : passed) {
      ++column_;
      if (unit != u'\n') continue;
      ++line_;
      column_ = 1;
    }
  }

  void PutText(const std::string& text) {
    const std::u16string units = ToUtf16(text);
    CountLines(units);
    if (unicode_) {
      for (const char16_t unit : units) {
        buffer_ += static_cast<char>(unit & 0xFF);
        buffer_ += static_cast<char>(unit >> 8);
      }
    } else {
      buffer_ += text;
    }
    if (buffer_.size() >= kBufferSize) Check(Flush());
  }

  int Flush() {
    if (buffer_.empty()) return 0;
    const std::string bytes = std::exchange(buffer_, {});
    return files_.Append(path_, bytes);
  }

  FileSystem& files_;
  std::string path_;
  StreamMode mode_;
  bool unicode_;
  bool open_ = true;
  std::u16string text_;  ///< what is read from
  std::size_t at_ = 0;
  std::string buffer_;  ///< what is not written yet
  std::size_t line_ = 1, column_ = 1;
};

constexpr Member kMembers[] = {
    {},  // no default member
    {"AtEndOfLine", 0, 0, TextStream::AtEndOfLine},
    {"AtEndOfStream", 0, 0, TextStream::AtEndOfStream},
    {"Close", 0, 0, TextStream::Close},
    {"Column", 0, 0, TextStream::Column},
    {"Line", 0, 0, TextStream::Line},
    {"Read", 1, 1, TextStream::Read},
    {"ReadAll", 0, 0, TextStream::ReadAll},
    {"ReadLine", 0, 0, TextStream::ReadLine},
    {"Skip", 1, 1, TextStream::Skip},
    {"SkipLine", 0, 0, TextStream::SkipLine},
    {"Write", 1, 1, TextStream::Write},
    {"WriteBlankLines", 1, 1, TextStream::WriteBlankLines},
    {"WriteLine", 0, 1, TextStream::WriteLine},
};

std::span<const Member> TextStream::Members() const { return kMembers; }

}  // namespace

Ref<Object> OpenTextStream(FileSystem& files, const std::string& path, StreamMode mode, bool unicode) {
  return Make<TextStream>(files, path, mode, unicode);
}

}  // namespace tessary::script
