#include <array>

#include "config/modFolders.h"
#include "ghostscript/modGhostScript.h"
#include "system/Conversions.h"
#include "system/FileHelpers.h"
#include "system/Paths.h"
#include "system/RegistryHelpers.h"

namespace tessary {

namespace {

// The registry search looks for one major version. Others are reached through the machine setting alone.
constexpr std::int32_t kHighestMajor = 8, kLowestMajor = 8;
constexpr std::int32_t kHighestMinor = 100;
constexpr std::array kProducts{"GPL Ghostscript", "AFPL Ghostscript"};

std::string ProgramIn(Run& run, const std::string& folder) {
  const PathStyle& style = run.host.paths;
  return JoinPath(style, StripTrailingBackslashes(style, folder), run.host.ghostscripts.ExecutableName());
}

/// The program of one registered version, or empty.
std::string Registered(Run& run, const std::string& product, const std::string& version, bool view64) {
  const std::string library = RegistryText(
      RegRead(run, "HKEY_LOCAL_MACHINE\\SOFTWARE\\" + product + "\\" + version + "\\GS_DLL", view64));
  if (library.empty()) return {};
  const std::string program = ProgramIn(run, ParentFolder(run.host.paths, library));
  return FileExists(run, program) ? program : std::string();
}

std::string SearchRegistry(Run& run, std::int32_t& major, std::int32_t& minor) {
  for (major = kHighestMajor; major >= kLowestMajor; --major)
    for (minor = kHighestMinor; minor >= 0; --minor)
      for (const bool view64 : {true, false})
        for (const char* product : kProducts) {
          const std::string version = std::to_string(major) + "." + std::to_string(minor);
          if (std::string program = Registered(run, product, version, view64); !program.empty()) return program;
        }
  major = minor = 0;
  return {};
}

/// The text between the first "c:/gs/gs" of the program's bytes and the next "/".
std::string CompiledInVersion(Run& run, const std::string& executablePath) {
  static constexpr std::string_view kMark = "c:/gs/gs";
  const std::string bytes = ReadFile(run, executablePath);
  const std::size_t mark = bytes.find(kMark);
  if (mark == std::string::npos) return {};
  const std::size_t start = mark + kMark.size(), end = bytes.find('/', start);
  return end == std::string::npos ? std::string()
                                  : DecodeText(run.host.codePage, bytes.substr(start, end - start));
}

std::string VersionText(Run& run, const std::string& executablePath) {
  GhostscriptState& known = run.ghostscript;
  if (known.askedExecutable == executablePath) return known.answeredVersion;
  const auto answer = run.host.ghostscripts.AskVersion(executablePath);
  if (!answer.ok()) return CompiledInVersion(run, executablePath);
  known.askedExecutable = executablePath;
  return known.answeredVersion = answer.value;
}

}  // namespace

std::string LocateGhostscript(Run& run, std::int32_t& major, std::int32_t& minor) {
  major = minor = 0;
  if (const std::string folder = GetMachineSetting(run, "ghostscriptfolder"); !folder.empty()) {
    std::string program = ProgramIn(run, run.host.paths.Native(folder));
    if (FileExists(run, program)) {
      GetGhostscriptVersion(run, program, major, minor);
      return program;
    }
  }
  return SearchRegistry(run, major, minor);
}

std::string GetGhostscriptVersion(Run& run, const std::string& executablePath, std::int32_t& major,
                                  std::int32_t& minor) {
  major = minor = 0;
  std::string version = VersionText(run, executablePath);
  const std::size_t dot = version.find('.');
  if (dot == std::string::npos) return version;
  const std::size_t second = version.find('.', dot + 1);
  major = ToLong(version.substr(0, dot));
  minor = ToLong(version.substr(dot + 1, second == std::string::npos ? second : second - dot - 1));
  return version;
}

}  // namespace tessary
