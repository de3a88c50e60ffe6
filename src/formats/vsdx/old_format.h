// The binary formats of older releases, which are not read, so that opening one says what the file is and what helps.
#pragma once

#include "host/document_format.h"

namespace quorvel::formats {

class OldFormat : public host::DocumentFormat {
 public:
  bool handles(std::string_view fileName) const override;
  bool canRead() const override { return false; }
  host::OpenResult open(host::Store& store, const std::string& fileName) const override;
  std::string save(const host::Store& store, host::DocumentId document, const std::string& fileName) const override;
};

}  // namespace quorvel::formats
