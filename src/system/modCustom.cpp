#include "system/modCustom.h"

#include "system/BuildNames.h"

namespace tessary {

std::string GetCompanyName() { return build::kCompany; }
std::string GetProductName() { return build::kProduct; }
std::string GetProductFolderName() { return "PDF Printer"; }
std::string GetCopyright() { return build::kCopyright; }
std::string GetVersion() {
  return std::to_string(build::kMajor) + "." + std::to_string(build::kMinor) + "." +
         std::to_string(build::kRevision);
}
std::string GetVendorSite() { return build::kVendorSite; }
std::string GetProducerText() { return GetProductName() + " / " + GetVendorSite(); }

}  // namespace tessary
