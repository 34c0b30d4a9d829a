#include "ghostscript/modGhostScript.h"

#include <utility>

#include "config/modSpecialFolders.h"
#include "ghostscript/Dialect.h"
#include "ghostscript/ParameterLines.h"
#include "ghostscript/modEncryption.h"
#include "postscript/modMerge.h"
#include "postscript/modWatermark.h"
#include "system/Conversions.h"
#include "system/Error.h"
#include "system/FileHelpers.h"
#include "system/Paths.h"
#include "system/modLog.h"
#include "system/modUtil.h"
#include "ui/modLocalize.h"

namespace tessary {

namespace {

constexpr std::int32_t kDefaultTimeout = 300;
constexpr std::int32_t kOldestMajor = 8, kOldestMinor = 50;
constexpr std::size_t kMostWords = 16 * 1024;  // bytes of its output in messages and in the log
constexpr const char* kFontSuffix = " (truetype)";

/// The file that the located version is given: the parameter file itself, or its translation beside it.
std::string ParametersFor(Run& run, Dictionary& settings, const std::string& parameterFile,
                          std::int32_t major) {
  const std::string text = ReadFile(run, parameterFile);
  GhostscriptAdditions additions = std::exchange(run.ghostscript.nextRun, {});
  additions.pdfPassword = EncodeText(run.host.codePage, GetOpeningPassword(settings));
  additions.prelude = EncodeText(run.host.codePage, additions.prelude);
  for (std::string& file : additions.readableFiles) file = EncodeText(run.host.codePage, file);
  const std::string translated = TranslateParameters(text, major, additions);
  if (translated == text) return parameterFile;
  const std::string file = parameterFile + ".run";
  WriteBinaryFile(run, file, translated);
  return file;
}

/// What a program said in `file`, which may not be there. A document can print without end before it fails, and
/// Ghostscript's own words come last.
std::string LastWords(Run& run, const std::string& file) {
  const std::string tail = file.empty() ? std::string() : ReadTail(run, file, kMostWords + 1);
  if (tail.size() <= kMostWords) return DecodeText(run.host.codePage, tail);
  return "..." + DecodeText(run.host.codePage, std::string_view(tail).substr(1));
}

[[noreturn]] void RaiseExitCode(Run& run, std::int32_t exitCode, const std::string& said) {
  WriteLog(run, "Ghostscript returned exit code " + std::to_string(exitCode) + "\r\nGhostscript output:\r\n" +
                    said + "\r\n");
  throw Error(errors::kGhostscriptFailed, "An error occured while running Ghostscript\r\n\r\n" + said);
}

/// The last conversion alone encrypts, so that a merge can read what the first one made.
bool EncryptsNow(Dictionary& settings, bool isFinalPass) {
  return IsEncrypted(settings) && (isFinalPass || !IsMergeRequested(settings));
}

/// The folders whose fonts Ghostscript may read: the system's, and the one of the stamp's font.
std::string FontPath(Run& run, Dictionary& settings) {
  const PathStyle& style = run.host.paths;
  const std::string fonts = GetSpecialFolder(run, folders::kFonts).value_or("");
  if (!IsStampEnabled(settings)) return fonts;
  const std::string folder = ParentFolder(style, GetWatermarkFontFile(run, settings));
  if (folder.starts_with(fonts + style.separator)) return fonts;
  return fonts + (style.hasDrives ? ';' : ':') + StripTrailingBackslashes(style, folder);
}

}  // namespace

std::int32_t GetGhostscriptTimeout(Dictionary& settings) {
  const std::string text = TrimBlanks(settings.Text("ghostscripttimeout"));
  const std::int32_t seconds = SafeLong(text);
  return text == std::to_string(seconds) ? seconds : kDefaultTimeout;
}

void RunGhostscript(Run& run, Dictionary& settings, const std::string& parameterFile,
                    const std::string& outputFile) {
  const std::int32_t timeout = GetGhostscriptTimeout(settings);
  std::int32_t major = 0, minor = 0;
  const std::string executable = LocateGhostscript(run, major, minor);
  if (executable.empty())
    throw Error(errors::kGhostscriptNotFound,
                Translate(run, "[L96]Unable to locate Ghostscript installation."));
  if (major < kOldestMajor || (major == kOldestMajor && minor < kOldestMinor))
    throw Error(
        errors::kGhostscriptOld,
        Translate(run,
                  "[L161]You have an old version of Ghostscript installed. Ghostscript version 8.50 or newer "
                  "is required. Please install a newer version."));

  const Command command =
      run.host.ghostscripts.RunCommand(executable, ParametersFor(run, settings, parameterFile, major));
  const LaunchResult result = LaunchProcess(run, command, timeout, ParentFolder(run.host.paths, executable));
  if (result.stillRunning) throw Error(errors::kGhostscriptTimedOut, "Ghostscript timed out");
  if (result.exitCode != 0)
    RaiseExitCode(run, result.exitCode, LastWords(run, outputFile) + LastWords(run, command.errorFile));
}

bool WritePdfParameterFile(Run& run, const std::string& parameterFile, const std::string& outputFile,
                           Dictionary& settings, bool isFinalPass, const std::string& stdoutFile,
                           const std::vector<std::string>& inputFiles) {
  std::vector<std::string> tokens = HeadTokens(stdoutFile);
  if (const std::string target = settings.Text("target"); !target.empty())
    tokens.push_back("-dPDFSETTINGS#/" + ToLower(target));
  std::string text = ParameterLines(tokens);
  if (EncryptsNow(settings, isFinalPass)) text += GetEncryptionParameters(settings);
  tokens.clear();
  for (const std::string& token :
       {std::string("-sDEVICE#pdfwrite"), QuotedSwitch("FONTPATH", FontPath(run, settings)),
        QuotedSwitch("OutputFile", outputFile), std::string("-dCompatibilityLevel#1.6"), std::string("-c"),
        std::string(".setpdfwrite"), std::string("-f")})
    tokens.push_back(token);
  for (const std::string& input : inputFiles) tokens.push_back('"' + input + '"');
  WriteTextFile(run, parameterFile, text + ParameterLines(tokens));
  return true;
}

Dictionary GetInstalledFonts(Run& run) {
  const std::string suffix = kFontSuffix;
  Dictionary fonts;
  for (const FontEntry& font : run.host.shell.InstalledFonts())
    if (!font.file.empty() && ToLower(font.name).ends_with(suffix))
      fonts.Set(font.file, font.name.substr(0, font.name.size() - suffix.size()));
  SortCollection(fonts, "");
  return fonts;
}

}  // namespace tessary
