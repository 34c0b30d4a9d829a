#include "job/JobFiles.h"

#include "config/modFolders.h"
#include "system/Conversions.h"
#include "system/Paths.h"

namespace tessary {

namespace {

GhostscriptFiles NameRun(const std::string& parameters) {
  return {parameters, ReplaceAll(parameters, ".gs", ".out")};  // everywhere in the path, and no more careful
}

}  // namespace

JobFiles NameJobFiles(Run& run) {
  const std::string base = JoinPath(run.host.paths, GetTemporaryFolder(run), run.job.SessionId);
  JobFiles files;
  files.patched = base + "_patched.ps";
  files.header = base + "_header.ps";
  files.mergeHeader = base + "_mergeheader.ps";
  files.document = base + "_printer.pdf";
  files.merged = base + "_merge.pdf";
  files.pages = base + "_page";
  files.conversion = NameRun(base + "_params.gs");
  files.merge = NameRun(base + "_me_param.gs");
  files.device = NameRun(base + "_device_param.gs");
  files.superimposeEps = base + "_si_#.eps";
  files.superimposeFullEps = base + "_si_full_#.eps";
  files.superimpose = NameRun(base + "_si_param_#.gs");
  return files;
}

}  // namespace tessary
