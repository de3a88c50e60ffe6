// What must work with every drawing that was read: saving in both formats, and opening again with the same contents.
#pragma once

#include <string>

#include "formats/vdx/document_reader.h"
#include "formats/vdx/document_writer.h"
#include "formats/vsdx/document_reader.h"
#include "formats/vsdx/document_writer.h"
#include "fuzz/check.h"
#include "fuzz/memory_file.h"
#include "host/sheet/inheritance.h"
#include "host/text/text.h"

namespace quorvel::fuzz {

struct Count {
  std::size_t pages = 0, masters = 0, styles = 0, shapes = 0;
  friend bool operator==(const Count&, const Count&) = default;
};

inline Count countOf(const host::Store& store, const host::Document& document) {
  Count count{document.pages.size(), document.masters.size(), document.styles.size()};
  for (const host::PageId page : document.pages) count.shapes += store.page(page)->byShapeId.size();
  for (const host::MasterId master : document.masters)
    count.shapes += store.page(store.master(master)->contents)->byShapeId.size();
  return count;
}

/// Reads a package into the fresh document; false when it was refused.
inline bool readPackage(host::Store& store, host::DocumentId document, const std::string& bytes) {
  const MemoryFile file(bytes);
  formats::ZipPackage package;
  // With the limits of real drawings a target would only become slow.
  const formats::PackageLimits limits{.partBytes = 4 << 20, .totalBytes = 8 << 20};
  const std::string wrong = package.open(file.name(), limits);
  return wrong.empty() && formats::readDocument(store, document, package).empty();
}

/// Saves in one of the formats; the size of the input decides which, so that there is time for more inputs.
inline void checkDrawing(const host::Store& store, host::DocumentId id, std::size_t inputSize) {
  const host::Document& document = *store.document(id);
  const Count count = countOf(store, document);
  for (const host::PageId page : document.pages) {
    for (const auto& [number, shape] : store.page(page)->byShapeId) {
      host::shownText(store, shape);
      host::rowsOf(store, shape, host::SectionNumber::User);
    }
  }
  if (inputSize % 2 == 0) {
    const std::string bytes =
        formats::makeZip(formats::writeDocument(store, document, formats::names::fileKinds[0]), false);
    host::Store again;
    const host::DocumentId other = again.addDocument("again");
    check(readPackage(again, other, bytes), "what was saved as a package opens");
    check(countOf(again, *again.document(other)) == count, "a package holds what was saved");
  } else {
    std::string bytes = formats::vdx::writeDocument(store, document);
    host::Store again;
    const host::DocumentId other = again.addDocument("again");
    const std::string wrong = formats::vdx::readDocument(again, other, bytes);
    check(wrong.empty(), "what was saved as one file opens: " + wrong);
    check(countOf(again, *again.document(other)) == count, "one file holds what was saved");
  }
}

}  // namespace quorvel::fuzz
