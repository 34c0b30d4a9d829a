#include "system/modCustom.h"

#include "system/BuildNames.h"

namespace tessary {

std::string GetCompanyName() { return build::kCompany; }
std::string GetProductName() { return build::kProduct; }
std::string GetProductFolderName() { return "PDF Printer"; }
std::string GetVendorSite() { return build::kVendorSite; }
std::string GetProducerText() { return GetProductName() + " / " + GetVendorSite(); }

}  // namespace tessary
