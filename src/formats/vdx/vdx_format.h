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
  /// What older releases lack is written in their terms (geometry by shares of width and height) or is put
  /// next to it in elements that they ignore (effects, gradients, theme cells, the themes themselves). Macros of a
  /// package and parts of its single pages cannot be kept here.
  std::string save(const host::Store& store, host::DocumentId document, const std::string& fileName) const override;
  /// What of the document a save under that name leaves out, as in "the macros".
  std::vector<std::string> leftOut(const host::Document& document, const std::string& fileName) const;

 private:
  const PackageLimits limits_;
};

}  // namespace quorvel::formats
