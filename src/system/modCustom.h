// The build's own names. The one place from which the system gets them.
#pragma once

#include <string>

namespace tessary {

/// First folder level of the per-user folders.
std::string GetCompanyName();
/// Title of dialogs and message boxes.
std::string GetProductName();
/// Second folder level of the per-user folders.
std::string GetProductFolderName();
/// The copyright line, and the version numbers without padding: "4.0.575".
std::string GetCopyright();
std::string GetVersion();
/// Host name of the vendor's web site.
std::string GetVendorSite();
/// The producer entry of the documents: product name, " / ", vendor site.
std::string GetProducerText();

}  // namespace tessary
