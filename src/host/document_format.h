// How the engine opens and saves files without knowing any format: the application layer passes the formats in.
#pragma once

#include <string>
#include <string_view>
#include <vector>

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
  /// False for one that is only known so that opening a file says what it is.
  virtual bool canRead() const { return true; }
  /// On an error the store is as it was.
  virtual OpenResult open(Store& store, const std::string& fileName) const = 0;
  /// Writes to another file in the folder, flushes and renames, so that an existing file is never damaged. Empty when
  /// it went well, else one sentence.
  virtual std::string save(const Store& store, DocumentId document, const std::string& fileName) const = 0;
};

/// The first format that handles the file's name; null for a name that no drawing has.
const DocumentFormat* formatFor(const std::vector<const DocumentFormat*>& formats, std::string_view fileName);

/// Reads the file in the format that its name asks for; the document takes its name and folder from the file.
OpenResult openFile(const std::vector<const DocumentFormat*>& formats, Store& store, const std::string& fileName);

/// Names the document by the file that it is kept in. A relative name is one below the current folder.
void placeDocument(Document& document, const std::string& fileName);

}  // namespace quorvel::host
