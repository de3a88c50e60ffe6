// Drawings, stencils and templates of older releases as one XML file: .vdx, .vsx, .vtx.
#pragma once

#include <string>
#include <vector>

#include "formats/package/zip_package.h"
#include "host/document_format.h"

namespace quorvel::formats {

class VdxFormat : public host::DocumentFormat {
 public:
  explicit VdxFormat(PackageLimits limits = {}) : limits_(limits) {}
  bool handles(std::string_view fileName) const override;
  /// Macros are kept for the next save in this format and never run.
  host::OpenResult open(host::Store& store, const std::string& fileName) const override;
  /// What older releases lack is written as they would have said it (geometry by shares of width and height) or stands
  /// beside it in elements that they pass over (effects, gradients, theme cells, the themes themselves). Macros of a
  /// package and what hangs at its single pages have no place here.
  std::string save(const host::Store& store, host::DocumentId document, const std::string& fileName) const override;
  /// What of the document a save under that name leaves out, as in "the macros".
  std::vector<std::string> leftOut(const host::Document& document, const std::string& fileName) const;

 private:
  const PackageLimits limits_;
};

}  // namespace quorvel::formats
