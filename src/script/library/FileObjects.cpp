#include "script/library/FileObjects.h"

#include "script/library/Arguments.h"
#include "script/library/Clock.h"
#include "script/library/FilePaths.h"
#include "script/library/Objects.h"
#include "script/library/TextStream.h"

namespace tessary::script {
namespace {

Value ObjectFor(FileSystem& files, const std::string& path, Kind kind) {
  return kind == Kind::File ? FileObject(files, path) : FolderObject(files, path);
}

// Sizes are Long as long as they fit.
Value SizeValue(std::uint64_t size) {
  return size <= 0x7FFFFFFF ? Value::Long(static_cast<std::int32_t>(size))
                            : Value::Double(static_cast<double>(size));
}

// The Files or the SubFolders of a folder, as they are at the moment of the question.
class FolderContents final : public NativeObject {
 public:
  FolderContents(std::string folder, Kind kind) : folder_(std::move(folder)), kind_(kind) {}
  [[nodiscard]] std::string ClassName() const override { return kind_ == Kind::File ? "Files" : "Folders"; }

  std::unique_ptr<Enumerator> Enumerate(Context& context) override {
    FileSystem& files = FilesOf(context);
    std::vector<Value> items;
    for (const FileFacts& facts : ItemsIn(files, folder_, kind_)) {
      items.push_back(ObjectFor(files, JoinPath(files, folder_, facts.name), kind_));
    }
    return std::make_unique<ListEnumerator>(std::move(items));
  }

  static Value Count(Object& self, Context& context, Arguments) {
    const auto& contents = As<FolderContents>(self);
    return LongOf(ItemsIn(FilesOf(context), contents.folder_, contents.kind_).size());
  }
  static Value Item(Object& self, Context& context, Arguments arguments) {
    const auto& contents = As<FolderContents>(self);
    FileSystem& files = FilesOf(context);
    return ObjectFor(files, JoinPath(files, contents.folder_, TextArgument(context, arguments[0])),
                     contents.kind_);
  }

 protected:
  [[nodiscard]] std::span<const Member> Members() const override {
    static constexpr Member kMembers[] = {{"Item", 1, 1, Item}, {"Count", 0, 0, Count}};
    return kMembers;
  }

 private:
  std::string folder_;
  Kind kind_;
};

class FileItem final : public NativeObject {
 public:
  FileItem(std::string path, Kind kind) : path_(std::move(path)), kind_(kind) {}
  [[nodiscard]] std::string ClassName() const override { return kind_ == Kind::File ? "File" : "Folder"; }

  static Value Path(Object& self, Context&, Arguments) { return Value::String(As<FileItem>(self).path_); }
  static Value GetName(Object& self, Context&, Arguments) {
    return Value::String(NameOf(As<FileItem>(self).path_));
  }
  static void PutName(Object& self, Context& context, Arguments, const Value& value, bool) {
    auto& item = As<FileItem>(self);
    FileSystem& files = FilesOf(context);
    item.MoveTo(files, JoinPath(files, ParentOf(item.path_), TextArgument(context, value)));
  }
  static Value DateLastModified(Object& self, Context& context, Arguments) {
    return Value::Date(SerialOf(As<FileItem>(self).Facts(FilesOf(context)).modified));
  }
  static Value Size(Object& self, Context& context, Arguments) {
    const auto& item = As<FileItem>(self);
    FileSystem& files = FilesOf(context);
    const FileFacts facts = item.Facts(files);
    return SizeValue(facts.folder ? SizeOfFolder(files, item.path_) : facts.size);
  }
  static Value ParentFolder(Object& self, Context& context, Arguments) {
    const std::string parent = ParentOf(As<FileItem>(self).path_);
    return parent.empty() ? Value::Nothing() : FolderObject(FilesOf(context), parent);
  }
  static Value Delete(Object& self, Context& context, Arguments) {
    const auto& item = As<FileItem>(self);
    DeleteItems(FilesOf(context), item.path_, item.kind_);
    return {};
  }
  static Value Copy(Object& self, Context& context, Arguments arguments) {
    const auto& item = As<FileItem>(self);
    CopyItems(FilesOf(context), item.path_, TextArgument(context, arguments[0]), BooleanOr(arguments, 1, true),
              item.kind_);
    return {};
  }
  static Value Move(Object& self, Context& context, Arguments arguments) {
    As<FileItem>(self).MoveTo(FilesOf(context), TextArgument(context, arguments[0]));
    return {};
  }
  static Value OpenAsTextStream(Object& self, Context& context, Arguments arguments) {
    const std::int32_t mode = LongOr(arguments, 0, 1);
    if (mode != 1 && mode != 2 && mode != 8) Raise(kInvalidCall);
    const bool unicode = LongWithin(arguments, 1, 0, -2, 0) == -1;
    return Value::Of(
        OpenTextStream(FilesOf(context), As<FileItem>(self).path_, static_cast<StreamMode>(mode), unicode));
  }
  template <Kind kind>
  static Value Contents(Object& self, Context& context, Arguments arguments) {
    const Value contents = NewObject<FolderContents>(As<FileItem>(self).path_, kind);
    return arguments.empty() ? contents : FolderContents::Item(*contents.object(), context, arguments);
  }
  static Value IsRootFolder(Object& self, Context&, Arguments) {
    return Value::Boolean(ParentOf(As<FileItem>(self).path_).empty());
  }
  static Value CreateFile(Object& self, Context& context, Arguments arguments) {
    return CreateTextFile(context, As<FileItem>(self).path_, arguments);
  }

 protected:
  [[nodiscard]] std::span<const Member> Members() const override;

 private:
  [[nodiscard]] FileFacts Facts(FileSystem& files) const {
    return kind_ == Kind::File ? FileAt(files, path_) : FolderAt(files, path_);
  }
  void MoveTo(FileSystem& files, const std::string& destination) {
    const bool intoFolder = !destination.empty() && IsSeparator(destination.back());
    MoveItems(files, path_, destination, kind_);
    path_ = AbsolutePath(files, intoFolder ? JoinPath(files, destination, NameOf(path_)) : destination);
  }

  std::string path_;
  Kind kind_;
};

constexpr Member kFileMembers[] = {
    {"Path", 0, 0, FileItem::Path},
    {"Copy", 1, 2, FileItem::Copy},
    {"DateLastModified", 0, 0, FileItem::DateLastModified},
    {"Delete", 0, 1, FileItem::Delete},
    {"Move", 1, 1, FileItem::Move},
    {"Name", 0, 0, FileItem::GetName, FileItem::PutName},
    {"OpenAsTextStream", 0, 2, FileItem::OpenAsTextStream},
    {"ParentFolder", 0, 0, FileItem::ParentFolder},
    {"Size", 0, 0, FileItem::Size},
};

constexpr Member kFolderMembers[] = {
    {"Path", 0, 0, FileItem::Path},
    {"Copy", 1, 2, FileItem::Copy},
    {"CreateTextFile", 1, 3, FileItem::CreateFile},
    {"DateLastModified", 0, 0, FileItem::DateLastModified},
    {"Delete", 0, 1, FileItem::Delete},
    {"Files", 0, 1, FileItem::Contents<Kind::File>},
    {"IsRootFolder", 0, 0, FileItem::IsRootFolder},
    {"Move", 1, 1, FileItem::Move},
    {"Name", 0, 0, FileItem::GetName, FileItem::PutName},
    {"ParentFolder", 0, 0, FileItem::ParentFolder},
    {"Size", 0, 0, FileItem::Size},
    {"SubFolders", 0, 1, FileItem::Contents<Kind::Folder>},
};

std::span<const Member> FileItem::Members() const {
  if (kind_ == Kind::File) return kFileMembers;
  return kFolderMembers;
}

}  // namespace

Value FileObject(FileSystem& files, const std::string& path) {
  FileAt(files, path);
  return NewObject<FileItem>(path, Kind::File);
}

Value FolderObject(FileSystem& files, const std::string& path) {
  FolderAt(files, path);
  return NewObject<FileItem>(path, Kind::Folder);
}

Value CreateTextFile(Context& context, const std::string& folder, Arguments arguments) {
  FileSystem& files = FilesOf(context);
  const std::string name = TextArgument(context, arguments[0]);
  if (name.empty()) Raise(kInvalidCall);
  const std::string path = AbsolutePath(files, folder.empty() ? name : JoinPath(files, folder, name));
  const bool overwrite = BooleanOr(arguments, 1, true), unicode = BooleanOr(arguments, 2, false);
  if (!overwrite && files.Find(path)) Raise(kFileExists);
  return Value::Of(OpenTextStream(files, path, StreamMode::Write, unicode));
}

}  // namespace tessary::script
