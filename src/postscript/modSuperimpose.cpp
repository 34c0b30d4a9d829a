#include "postscript/modSuperimpose.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "ghostscript/ParameterLines.h"
#include "ghostscript/modGhostScript.h"
#include "postscript/Underlay.h"
#include "system/Conversions.h"
#include "system/Error.h"
#include "system/FileHelpers.h"
#include "system/Paths.h"
#include "ui/modLocalize.h"

namespace tessary {

namespace {

constexpr std::pair kFirstWithoutEpsWrite{9, 14};
constexpr std::pair kFirstWithUnderlay{10, 0};

/// One background and the files that are made of it.
struct Background {
  std::string name;  ///< as the setting has it
  std::string file;  ///< the same as a full path
  std::string eps;   ///< the text
  std::string fullEps;
  std::string parameters;
  std::string output;
};

/// How a device makes the text of a page.
struct EpsDevice {
  std::vector<std::string> switches;
  bool cutAtShowPage;  ///< otherwise the text is kept whole and its showpage emptied
};

const EpsDevice& EpsWrite() {
  static const EpsDevice device{{"-sDEVICE#epswrite", "-r14400"}, true};
  return device;
}

const EpsDevice& Eps2Write() {
  static const EpsDevice device{{"-sDEVICE#eps2write", "-r600", "-dLastPage#1"}, false};
  return device;
}

void WriteEpsParameterFile(Run& run, const Background& background, const EpsDevice& device) {
  std::vector<std::string> tokens = HeadTokens(background.output);
  tokens.insert(tokens.end(), device.switches.begin(), device.switches.end());
  tokens.push_back(QuotedSwitch("OutputFile", background.fullEps));
  // The last line has no line end, in this one kind of file.
  WriteTextFile(run, background.parameters, ParameterLines(tokens) + '"' + background.file + '"');
}

/// What of a page's EPS can be pasted into another page.
std::string TrimEps(std::string eps, const EpsDevice& device) {
  if (!device.cutAtShowPage) return "save userdict /showpage {} put\r\n" + eps + "\r\nrestore\r\n";
  eps.resize(std::min(eps.find("showpage"), eps.size()));
  return eps;
}

void ConvertAndForgetOutput(Run& run, Dictionary& settings, const Background& background) {
  RunGhostscript(run, settings, background.parameters, background.output);
  if (FileExists(run, background.output) && !IsDebugRun(run)) run.host.files.Remove(background.output);
}

void MakeEps(Run& run, Dictionary& settings, const Background& background, const EpsDevice& device) {
  WriteEpsParameterFile(run, background, device);
  ConvertAndForgetOutput(run, settings, background);
  WriteBinaryFile(run, background.eps, TrimEps(ReadFile(run, background.fullEps), device));
}

void MakeUnderlay(Run& run, Dictionary& settings, const Background& background, std::size_t number) {
  try {
    if (!IsPdf(run, background.file)) throw Error(errors::kBackgroundUnusable, "It is no PDF.");
    WriteUnderlayParameterFile(run, background.parameters, background.file, background.fullEps,
                               background.output);
    ConvertAndForgetOutput(run, settings, background);
  } catch (const Error& error) {
    throw Error(error.number(),
                "Background PDF '" + background.name + "' cannot be used. " + error.description(),
                error.source());
  }
  RemovePageGroup(run, background.fullEps);
  WriteTextFile(run, background.eps, UnderlayCall(number));
}

}  // namespace

bool IsSuperimposeRequested(Dictionary& settings) { return !settings.Text("superimpose").empty(); }

void CreateSuperimposeEpsFiles(Run& run, Dictionary& settings, const std::string& epsFile,
                               const std::string& fullEpsFile, const std::string& parameterFile,
                               const std::string& outputFile) {
  std::int32_t major = 0, minor = 0;
  LocateGhostscript(run, major, minor);
  const std::pair version{major, minor};

  std::vector<std::string> pages;
  for (const auto& [key, entry] : ParseSuperimposeValue(settings.Text("superimpose"))) {
    const std::size_t number = pages.size() + 1;
    const auto numbered = [&](const std::string& pattern) {
      return ReplaceAll(pattern, "#", std::to_string(number));
    };
    Background background;
    background.name = entry.AsDictionary()->Text("filename");
    background.output = run.job.ProgressFile = numbered(outputFile);
    if (!FileExists(run, background.name))
      throw Error(errors::kBackgroundUnusable, "Background PDF '" + background.name + "' does not exist.");
    background.file = FullPath(run.host, background.name);
    background.eps = numbered(epsFile);
    background.fullEps = numbered(fullEpsFile);
    background.parameters = numbered(parameterFile);
    pages.push_back(background.fullEps);
    if (version >= kFirstWithUnderlay)
      MakeUnderlay(run, settings, background, number);
    else
      MakeEps(run, settings, background, version < kFirstWithoutEpsWrite ? EpsWrite() : Eps2Write());
  }
  if (version < kFirstWithUnderlay) return;
  run.ghostscript.nextRun = {"", ReplaceAll(epsFile, "#", "0"), pages};
  for (std::string& page : pages) page = EncodeText(run.host.codePage, page);
  WriteTextFile(run, run.ghostscript.nextRun.prelude, UnderlayPrelude(pages));
}

}  // namespace tessary
