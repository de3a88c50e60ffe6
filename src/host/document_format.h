// How the engine opens and saves files without knowing any format: the roof hands the formats in.
#pragma once

#include <string>
#include <string_view>

#include "base/maybe.h"
#include "host/sheet/store.h"

namespace quorvel::host {

/// What became of a file: a document, or one sentence that names the file, says what is wrong and what to do.
struct OpenResult {
  DocumentId document;
  std::string error;
};

class DocumentFormat {
 public:
  virtual ~DocumentFormat() = default;
  /// True when the file name's extension is one of this format.
  virtual bool handles(std::string_view fileName) const = 0;
  /// On an error the store is as it was.
  virtual OpenResult open(Store& store, const std::string& fileName) const = 0;
  /// Writes beside the file, flushes and renames, so that what is there is never endangered. Empty when it went well,
  /// else one sentence.
  virtual std::string save(const Store& store, DocumentId document, const std::string& fileName) const = 0;
};

}  // namespace quorvel::host
