#include "job/Conversion.h"

#include "ghostscript/modEncryption.h"
#include "ghostscript/modGhostScript.h"
#include "job/PageNumbers.h"
#include "job/Progress.h"
#include "postscript/PostScriptHeader.h"
#include "postscript/modMerge.h"
#include "postscript/modPostScript.h"
#include "postscript/modSuperimpose.h"
#include "system/Conversions.h"
#include "system/FileHelpers.h"
#include "system/Paths.h"
#include "system/modLog.h"
#include "ui/modLocalize.h"

namespace tessary {

namespace {

void RemoveUnlessDebugging(Run& run, const std::string& file) {
  if (FileExists(run, file) && !IsDebugRun(run)) run.host.files.Remove(file);
}

void MakeBackgrounds(Run& run, Dictionary& config, const JobFiles& files) {
  WriteLog(run, "Superimpose EPS: " + files.superimposeEps);
  WriteLog(run, "Superimpose Full EPS: " + files.superimposeFullEps);
  WriteLog(run, "Superimpose parameters: " + files.superimpose.parameters);
  CreateSuperimposeEpsFiles(run, config, files.superimposeEps, files.superimposeFullEps,
                            files.superimpose.parameters, files.superimpose.standardOutput);
}

/// A job that draws the pages of a PDF has it beside itself under its own name, and may read this one file.
/// True if there is one.
bool AllowPdfBeside(Run& run, const std::string& psFile) {
  const std::string pdf = psFile + ".pdf";
  if (!FileExists(run, pdf)) return false;
  WriteLog(run, "The job may read " + pdf);
  run.ghostscript.nextRun.readableFiles.push_back(pdf);
  return true;
}

void ConvertToPdf(Run& run, Dictionary& config, const JobFiles& files, const std::string& psFile) {
  std::string backgrounds;
  if (IsSuperimposeRequested(config)) {
    MakeBackgrounds(run, config, files);
    backgrounds = files.superimposeEps;
  }
  WriteLog(run, "Patch");
  PatchPostScriptFile(run, config, backgrounds, files.patched, psFile);
  const bool drawsPdf = AllowPdfBeside(run, psFile);
  WriteLog(run, "Header");
  WritePostScriptHeader(run, files.header, config, true, drawsPdf);
  const auto& [parameters, standardOutput] = files.conversion;
  WriteLog(run, "Parameters");
  WritePdfParameterFile(run, parameters, files.document, config, false, standardOutput,
                        {files.header, files.patched});
  WriteLog(run, "Ghostscript");
  run.job.ProgressFile = standardOutput;
  RunGhostscript(run, config, parameters, standardOutput);
  run.job.PageCount = GetLastOutputPage(run, standardOutput);
  RemoveUnlessDebugging(run, standardOutput);
}

void Merge(Run& run, Dictionary& config, const JobFiles& files, const std::string& mergeFile) {
  TellOfMerge(run, config);
  const auto& [parameters, standardOutput] = files.merge;
  WriteLog(run, "Merge parameters: " + parameters);
  const bool jobFirst = ToLower(config.Text("mergeposition")) == "top";
  const std::string& first = jobFirst ? files.document : mergeFile;
  const std::string& second = jobFirst ? mergeFile : files.document;
  WriteLog(run, "Merge: " + first + " + " + second);
  WritePostScriptHeader(run, files.mergeHeader, config, false);
  WritePdfParameterFile(run, parameters, files.merged, config, true, standardOutput,
                        {files.mergeHeader, first, second});
  RunGhostscript(run, config, parameters, files.conversion.standardOutput);
  RemoveUnlessDebugging(run, standardOutput);
}

/// What an earlier run under this id has left would be delivered behind the images of this job.
void RemoveOldImages(Run& run, const JobFiles& files) {
  const PathStyle& style = run.host.paths;
  const std::string folder = StripTrailingBackslashes(style, ParentFolder(style, files.pages));
  const std::string head = FileNameOf(style, files.pages);
  for (const FileInfo& file : run.host.files.List(folder).value)
    if (file.kind == FileKind::Plain && file.name.starts_with(head))
      run.host.files.Remove(JoinPath(style, folder, file.name));
}

Product MakeImages(Run& run, Dictionary& config, const JobFiles& files, const std::string& pdf,
                   bool isPageWise) {
  RemoveOldImages(run, files);
  Product images{files.pages, "", true, isPageWise};
  const auto& [parameters, standardOutput] = files.device;
  std::string device = files.pages + (isPageWise ? "_%08d" : "");
  WriteDeviceParameterFile(run, parameters, device, config, standardOutput, pdf, images.extension);
  RunGhostscript(run, config, parameters, standardOutput);
  return images;
}

/// The PDF of the job with the merge file, or without it where there is no such file.
std::string MergedDocument(Run& run, Dictionary& config, const JobFiles& files) {
  if (!IsMergeRequested(config)) return files.document;
  const std::string mergeFile = FullPath(run.host, TrimBlanks(config.Text("mergefile")));
  if (!FileExists(run, mergeFile)) {
    LogLostEncryption(run, config);
    return files.document;
  }
  Merge(run, config, files, mergeFile);
  return files.merged;
}

}  // namespace

Product ConvertJob(Run& run, Dictionary& config, const JobFiles& files, const std::string& psFile,
                   const std::string& output) {
  ConvertToPdf(run, config, files, psFile);
  const std::string pdf = MergedDocument(run, config, files);
  if (!IsDeviceOutput(config)) return {pdf, "", false, false};
  return MakeImages(run, config, files, pdf, FindPageTag(output) != std::string::npos);
}

}  // namespace tessary
