#include "host/document_format.h"

#include <filesystem>

namespace quorvel::host {

const DocumentFormat* formatFor(const std::vector<const DocumentFormat*>& formats, std::string_view fileName) {
  for (const DocumentFormat* format : formats)
    if (format->handles(fileName)) return format;
  return nullptr;
}

OpenResult openFile(const std::vector<const DocumentFormat*>& formats, Store& store, const std::string& fileName) {
  const DocumentFormat* format = formatFor(formats, fileName);
  if (!format)
    return {{},
            "\"" + fileName + "\" is not a kind of drawing that can be read; a .vsdx, .vssx, .vstx or .vdx file can."};
  const OpenResult result = format->open(store, fileName);
  if (result.document) placeDocument(*store.document(result.document), fileName);
  return result;
}

void placeDocument(Document& document, const std::string& fileName) {
  namespace fs = std::filesystem;
  std::error_code ignored;
  const fs::path full = fs::absolute(fs::path(fileName), ignored).lexically_normal();
  document.name = full.filename().string();
  document.path = full.parent_path().string();
  if (!document.path.empty() && document.path.back() != '/') document.path += '/';
}

}  // namespace quorvel::host
