// Drawings, stencils and templates as packages of XML parts: .vsdx, .vssx, .vstx, and with macros .vsdm, .vssm, .vstm.
#pragma once

#include <string>
#include <vector>

#include "formats/package/zip_package.h"
#include "host/document_format.h"

namespace quorvel::formats {

class VsdxFormat : public host::DocumentFormat {
 public:
  explicit VsdxFormat(PackageLimits limits = {}) : limits_(limits) {}
  bool handles(std::string_view fileName) const override;
  /// Macros are kept for the next save and never run.
  host::OpenResult open(host::Store& store, const std::string& fileName) const override;
  /// The extension decides what the file says it is. Macros go only into the three kinds that may hold them.
  std::string save(const host::Store& store, host::DocumentId document, const std::string& fileName) const override;
  /// What of the document a save under that name leaves out, as in "the macros".
  std::vector<std::string> leftOut(const host::Document& document, const std::string& fileName) const;

 private:
  const PackageLimits limits_;
};

}  // namespace quorvel::formats
