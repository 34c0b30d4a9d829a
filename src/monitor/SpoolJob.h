// A printed document on its way into the temporary folder, in the form in which `gui` takes a job.
//
// PostScript becomes the spooled job itself (Spooler.h). Of a PDF the spooled job is a small program that draws
// its pages, and the PDF lies beside it (PdfDocument.h); Ghostscript may read that one file while it runs the
// job.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "host/Files.h"
#include "system/Run.h"

namespace tessary {

/// What is known of a document beside its bytes. All of it may come from strangers.
struct DocumentTicket {
  std::string title;  ///< for a PDF; PostScript names itself in its comments
  std::string user;   ///< who has printed it; for a PDF as well
  int copies = 1;     ///< how many times all pages come, one document after the other; below 1 counts as 1
};

/// The files of one spooled job, removed when the object goes. Those that are not there do not matter.
class SpooledJob {
 public:
  /// `path` is the job's PostScript file, in the temporary folder. Not below the name of the session: `gui`
  /// removes everything that begins with it, and a failed job has to stay.
  SpooledJob(Run& run, std::string path) : run_(run), path_(std::move(path)) {}
  ~SpooledJob();
  SpooledJob(const SpooledJob&) = delete;
  SpooledJob& operator=(const SpooledJob&) = delete;

  [[nodiscard]] const std::string& path() const { return path_; }
  /// The file beside it that holds a PDF.
  [[nodiscard]] std::string DocumentPath() const { return path_ + ".pdf"; }
  /// How many pages the document announces, all copies together; 0: it says nothing of them.
  [[nodiscard]] std::int32_t Pages() const { return pages_; }
  void SetPages(std::int32_t pages) { pages_ = pages; }
  /// The files stay.
  void Keep() { kept_ = true; }

 private:
  Run& run_;
  std::string path_;
  std::int32_t pages_ = 0;
  bool kept_ = false;
};

/// Spools the document in the file `source`, PostScript or PDF by its content; what cannot be read twice, such
/// as a pipe, is copied first. Returns why that failed, as the end of a sentence about the document ("is
/// empty", "needs a password"), or an empty text. Raises the platform's error for a file that cannot be opened,
/// and the errors of RunGhostscript, which is asked for the pages of a PDF. Whatever happens, what is left
/// behind are the files of `job`; the PDF is one of them only where the document is a PDF, or there was a
/// problem.
std::string SpoolJob(Run& run, const std::string& source, SpooledJob& job, const DocumentTicket& ticket);

/// The same for an open file that is able to seek; it is read and no more.
std::string SpoolJob(Run& run, File& source, SpooledJob& job, const DocumentTicket& ticket);

/// The same for a document that has come in pieces and been written to `job.DocumentPath()`, opened with
/// OpenMode::Create: a PDF stays where it is.
std::string SpoolReceived(Run& run, std::unique_ptr<File> received, SpooledJob& job,
                          const DocumentTicket& ticket);

}  // namespace tessary
