// The protection of a PDF: passwords, the length of the key and permissions, as the settings ask for them.
#pragma once

#include <string>

#include "config/Dictionary.h"
#include "system/Run.h"

namespace tessary {

/// True when `ownerpassword` is not empty. A user password alone does not encrypt.
bool IsEncrypted(Dictionary& settings);

/// The lines of a parameter file that protect the PDF, each ended by CR LF. The values stand as they are in the
/// settings; an empty one has no line. The security revision is always 3.
std::string GetEncryptionParameters(Dictionary& settings);

/// A password that opens the PDFs which these settings protect; empty when they protect none.
std::string GetOpeningPassword(Dictionary& settings);

/// For a merge that does not take place because its file is missing. The document was converted without
/// protection then, which the merge was to add; if the settings ask for it, the log says that it is lost.
void LogLostEncryption(Run& run, Dictionary& settings);

}  // namespace tessary
