// Finds Ghostscript, refuses an old one, runs it with a parameter file under a time limit, and reads the page
// number out of its output.
//
// A parameter file has one token per line, each line ended by CR LF, in the machine's code page. Every switch
// joins its name and value with "#"; file names stand in double quotes. RunGhostscript knows the version that
// it located and translates the file where that version reads it differently (Dialect.h).
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "config/Dictionary.h"
#include "system/Run.h"

namespace tessary {

/// The time limit in seconds: `ghostscripttimeout` where it is a whole number written plainly, otherwise 300. A
/// limit of 0 does not wait at all.
std::int32_t GetGhostscriptTimeout(Dictionary& settings);

/// The full path of Ghostscript's console program, empty when none is found, and its version, 0.0 when unknown.
/// Tried in this order: the machine setting `ghostscriptfolder`; the installations of version 8 in the
/// registry, the highest first. Nothing is kept between calls but the answer of a program that had to be asked.
std::string LocateGhostscript(Run& run, std::int32_t& major, std::int32_t& minor);

/// The version text of an executable, such as "8.54", and its first two numbers; 0.0 when there is none or it
/// holds no ".". The program is asked where this machine's Ghostscript can be asked; otherwise the text is the
/// folder name in the library path "c:/gs/gs<version>/" that is compiled into it. Raises kTypeMismatch for a
/// part that is no number.
std::string GetGhostscriptVersion(Run& run, const std::string& executablePath, std::int32_t& major,
                                  std::int32_t& minor);

/// Runs Ghostscript once and returns only on success. `outputFile` is the file that the parameter file names
/// for Ghostscript's standard output; after a failure its text goes into the log and the error. Takes
/// GhostscriptState::nextRun. Raises kGhostscriptNotFound, kGhostscriptOld, kGhostscriptTimedOut (the child
/// runs on), kGhostscriptFailed, or kCommon if it cannot be started.
void RunGhostscript(Run& run, Dictionary& settings, const std::string& parameterFile,
                    const std::string& outputFile);

/// Writes the parameter file for a conversion of `inputFiles`, in their order, to the PDF `outputFile`. The
/// security lines (modEncryption.h) are left to the final pass when `mergefile` names a PDF to merge with.
/// Raises the platform's error; an older file is then as it was. True otherwise.
bool WritePdfParameterFile(Run& run, const std::string& parameterFile, const std::string& outputFile,
                           Dictionary& settings, bool isFinalPass, const std::string& stdoutFile,
                           const std::vector<std::string>& inputFiles);

/// True when `device` names an image device: the job's result is images then and no PDF.
bool IsDeviceOutput(Dictionary& settings);

/// Writes the parameter file that turns the PDF `inputFile` into images. `outputFile` comes in as their path
/// without extension, with "%08d" in it where every page is a file of its own, and goes out with "." and the
/// extension; `extension` goes out as the one that belongs to `device`, and unchanged for a device that is not
/// known here. Raises the platform's error; an older file is then as it was. True otherwise.
bool WriteDeviceParameterFile(Run& run, const std::string& parameterFile, std::string& outputFile,
                              Dictionary& settings, const std::string& stdoutFile, const std::string& inputFile,
                              std::string& extension);

/// The number in the last complete page marker `%%[Page: n]%%` among the last 1000 bytes of `outputFile`, which
/// may still be written; 0 when there is none or the file cannot be read. Markers whose number is not above 0
/// are passed over, and the log says so once a run.
std::int32_t GetLastOutputPage(Run& run, const std::string& outputFile);

/// The TrueType fonts of the machine: file name to display name, in the order of the display names.
Dictionary GetInstalledFonts(Run& run);

}  // namespace tessary
