// One document of a print server's job, from the server's pipe to its PDF.
#pragma once

#include <memory>
#include <string>

#include "monitor/Frames.h"
#include "monitor/GuiJob.h"
#include "monitor/SpoolJob.h"
#include "monitor/posix/BackendCancel.h"
#include "monitor/posix/JobReport.h"

namespace tessary {

/// What the documents of a job have in common.
struct BackendTicket {
  std::string job;           ///< its number
  std::string user;          ///< who has printed it
  std::string printer;       ///< with the instance in brackets: "PDF Printer [Sales]"
  std::string remoteFolder;  ///< not empty: nobody is asked, and the documents go into this folder
};

class BackendDocument {
 public:
  /// Everything outlives this object. The process is one of the user's.
  BackendDocument(Run& run, JobReport& report, const BackendCancel& cancel, const BackendTicket& ticket)
      : run_(run), report_(report), cancel_(cancel), ticket_(ticket) {}

  /// Spools the document that `source` gives and has `gui` print it, in the user's session where that has an
  /// agent. False if it did not become a PDF: the report and the log of its session say why. Raises kCancelled,
  /// also if `source` fails with it; nothing of the document is left then. A spooled document never stays, only
  /// the log of a failure.
  bool Print(const ByteSource& source, const std::string& title, int copies);

 private:
  std::string Spool(std::unique_ptr<File> received, SpooledJob& spooled, const DocumentTicket& document);
  std::string HandOver(GuiJob job);
  GuiOutcome RunGui(const GuiJob& job);
  GuiOutcome RunGuiHere(const GuiJob& job);
  std::string Explain(const GuiOutcome& outcome, const std::string& session);

  Run& run_;
  JobReport& report_;
  const BackendCancel& cancel_;
  const BackendTicket& ticket_;
  bool askedUser_ = false;  ///< `gui` ran where its dialogs are seen
  std::string guiWords_;    ///< the beginning of what `gui` said
};

}  // namespace tessary
