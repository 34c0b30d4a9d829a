// What a script needs of the machine, handed in by whoever makes the engine.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessary::script {

struct LocalTime {
  int year = 1899, month = 12, day = 30, hour = 0, minute = 0, second = 0;
};

struct FileFacts {
  std::string name;  ///< without its folder
  bool folder = false;
  std::uint64_t size = 0;  ///< bytes
  LocalTime modified;
};

/// Files and folders by paths in the machine's own form, UTF-8. Every int is 0 or the error number that the
/// script gets (53 File not found, 58 File already exists, 70 Permission denied, 76 Path not found).
class FileSystem {
 public:
  virtual ~FileSystem() = default;
  virtual std::optional<FileFacts> Find(const std::string& path) = 0;
  /// What a folder holds, in no fixed order.
  virtual int List(const std::string& folder, std::vector<FileFacts>& entries) = 0;
  virtual int Read(const std::string& path, std::string& bytes) = 0;
  /// Makes `bytes` the whole content, the file being made when missing.
  virtual int Write(const std::string& path, std::string_view bytes) = 0;
  virtual int Append(const std::string& path, std::string_view bytes) = 0;
  virtual int Copy(const std::string& source, const std::string& destination) = 0;
  virtual int Remove(const std::string& path) = 0;  ///< a file, or a folder that is empty
  virtual int MakeFolder(const std::string& path) = 0;
  virtual char Separator() = 0;  ///< '/' or '\\'
  virtual std::string TempFolder() = 0;
  virtual std::string CurrentFolder() = 0;  ///< where relative paths begin
};

/// An absent service is an empty function or a null pointer; a script that needs it gets error 445 (files), an
/// empty text (environment), the day zero (clock), or nothing happens (echo).
struct Services {
  FileSystem* files = nullptr;                                 ///< not owned
  std::function<LocalTime()> now;                              ///< the local time
  std::function<double()> timer;                               ///< seconds since midnight, with fractions
  std::function<std::string(const std::string&)> environment;  ///< a variable's value, empty when not set
  std::function<void(std::string_view)> echo;                  ///< a line of output, without its end
};

}  // namespace tessary::script
