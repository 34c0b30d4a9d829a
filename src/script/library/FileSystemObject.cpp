#include <random>

#include "script/library/Arguments.h"
#include "script/library/FileObjects.h"
#include "script/library/FilePaths.h"
#include "script/library/Objects.h"
#include "script/library/TextStream.h"

namespace tessary::script {
namespace {

std::string PathArgument(Context& context, const Value& value) {
  const std::string path = TextArgument(context, value);
  if (path.empty()) Raise(kInvalidCall);
  return AbsolutePath(FilesOf(context), path);
}

template <std::string (*Part)(std::string_view)>
Value PartOfPath(Object&, Context& context, Arguments arguments) {
  return Value::String(Part(TextArgument(context, arguments[0])));
}

Value BuildPath(Object&, Context& context, Arguments arguments) {
  const std::string folder = TextArgument(context, arguments[0]), name = TextArgument(context, arguments[1]);
  // A path of the other kind of machine keeps its separator.
  return Value::String(
      JoinPath(folder.find('\\') != folder.npos ? '\\' : FilesOf(context).Separator(), folder, name));
}

Value GetAbsolutePathName(Object&, Context& context, Arguments arguments) {
  return Value::String(AbsolutePath(FilesOf(context), TextArgument(context, arguments[0])));
}

Value GetDriveName(Object&, Context& context, Arguments arguments) {
  const std::string path = TextArgument(context, arguments[0]);
  return Value::String(path.size() >= 2 && path[1] == ':' ? path.substr(0, 2) : std::string());
}

Value GetTempName(Object&, Context&, Arguments) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::random_device random;
  std::string name = "rad";
  for (int i = 0; i < 5; ++i) name += kDigits[random() % kDigits.size()];
  return Value::String(name + ".tmp");
}

template <bool (*Test)(FileSystem&, const std::string&)>
Value Exists(Object&, Context& context, Arguments arguments) {
  const std::string path = TextArgument(context, arguments[0]);
  FileSystem& files = FilesOf(context);
  return Value::Boolean(!path.empty() && Test(files, AbsolutePath(files, path)));
}

// "C", "C:" or "C:\", where the machine has drives at all.
Value DriveExists(Object&, Context& context, Arguments arguments) {
  const std::string drive = ToText(arguments[0]);
  FileSystem& files = FilesOf(context);
  const bool named = !drive.empty() && (drive.size() == 1 || (drive[1] == ':' && drive.size() <= 3));
  return Value::Boolean(named && files.Separator() == '\\' && IsFolder(files, drive.substr(0, 1) + ":\\"));
}

Value GetFile(Object&, Context& context, Arguments arguments) {
  return FileObject(FilesOf(context), PathArgument(context, arguments[0]));
}

Value GetFolder(Object&, Context& context, Arguments arguments) {
  return FolderObject(FilesOf(context), PathArgument(context, arguments[0]));
}

// Only the temporary folder (2) is known; the system's own (0 and 1) are not for macros.
Value GetSpecialFolder(Object&, Context& context, Arguments arguments) {
  FileSystem& files = FilesOf(context);
  if (LongWithin(arguments, 0, 0, 0, 2) != 2) Raise(kPathNotFound);
  return FolderObject(files, AbsolutePath(files, files.TempFolder()));
}

Value CreateFolder(Object&, Context& context, Arguments arguments) {
  FileSystem& files = FilesOf(context);
  const std::string path = PathArgument(context, arguments[0]);
  if (files.Find(path)) Raise(kFileExists);
  Check(files.MakeFolder(path));
  return FolderObject(files, path);
}

Value CreateTextFileMember(Object&, Context& context, Arguments arguments) {
  return CreateTextFile(context, {}, arguments);
}

Value OpenTextFile(Object&, Context& context, Arguments arguments) {
  const std::string path = PathArgument(context, arguments[0]);
  const std::int32_t mode = LongOr(arguments, 1, 1);
  if (mode != 1 && mode != 2 && mode != 8) Raise(kInvalidCall);
  const bool create = BooleanOr(arguments, 2, false);
  const bool unicode = LongWithin(arguments, 3, 0, -2, 0) == -1;
  FileSystem& files = FilesOf(context);
  if (!files.Find(path)) {
    if (!create) Raise(kFileNotFound);
    Check(files.Write(path, {}));
  }
  return Value::Of(OpenTextStream(files, path, static_cast<StreamMode>(mode), unicode));
}

template <Kind kind>
Value Delete(Object&, Context& context, Arguments arguments) {
  DeleteItems(FilesOf(context), PathArgument(context, arguments[0]), kind);
  return {};
}

template <Kind kind>
Value Copy(Object&, Context& context, Arguments arguments) {
  CopyItems(FilesOf(context), TextArgument(context, arguments[0]), TextArgument(context, arguments[1]),
            BooleanOr(arguments, 2, true), kind);
  return {};
}

template <Kind kind>
Value Move(Object&, Context& context, Arguments arguments) {
  MoveItems(FilesOf(context), TextArgument(context, arguments[0]), TextArgument(context, arguments[1]), kind);
  return {};
}

class FileSystemObject final : public NativeObject {
 public:
  [[nodiscard]] std::string ClassName() const override { return "FileSystemObject"; }

 protected:
  [[nodiscard]] std::span<const Member> Members() const override;
};

constexpr Member kMembers[] = {
    {},  // no default member
    {"BuildPath", 2, 2, BuildPath},
    {"CopyFile", 2, 3, Copy<Kind::File>},
    {"CopyFolder", 2, 3, Copy<Kind::Folder>},
    {"CreateFolder", 1, 1, CreateFolder},
    {"CreateTextFile", 1, 3, CreateTextFileMember},
    {"DeleteFile", 1, 2, Delete<Kind::File>},
    {"DeleteFolder", 1, 2, Delete<Kind::Folder>},
    {"DriveExists", 1, 1, DriveExists},
    {"FileExists", 1, 1, Exists<IsFile>},
    {"FolderExists", 1, 1, Exists<IsFolder>},
    {"GetAbsolutePathName", 1, 1, GetAbsolutePathName},
    {"GetBaseName", 1, 1, PartOfPath<BaseOf>},
    {"GetDriveName", 1, 1, GetDriveName},
    {"GetExtensionName", 1, 1, PartOfPath<ExtensionOf>},
    {"GetFile", 1, 1, GetFile},
    {"GetFileName", 1, 1, PartOfPath<NameOf>},
    {"GetFolder", 1, 1, GetFolder},
    {"GetParentFolderName", 1, 1, PartOfPath<ParentOf>},
    {"GetSpecialFolder", 1, 1, GetSpecialFolder},
    {"GetTempName", 0, 0, GetTempName},
    {"MoveFile", 2, 2, Move<Kind::File>},
    {"MoveFolder", 2, 2, Move<Kind::Folder>},
    {"OpenTextFile", 1, 4, OpenTextFile},
};

std::span<const Member> FileSystemObject::Members() const { return kMembers; }

}  // namespace

Ref<Object> MakeFileSystemObject(Context&) { return Make<FileSystemObject>(); }

}  // namespace tessary::script
