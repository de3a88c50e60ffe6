#include "formats/vsdx/vsdx_format.h"

#include <algorithm>
#include <filesystem>

#include "formats/package/atomic_file.h"
#include "formats/package/part_name.h"
#include "formats/package/saving_limits.h"
#include "formats/vsdx/document_reader.h"
#include "formats/vsdx/document_writer.h"

namespace quorvel::formats {
namespace {

const names::FileKind* kindOf(std::string_view fileName) {
  const auto found = std::ranges::find(names::fileKinds, extensionOf(fileName), &names::FileKind::extension);
  return found == std::end(names::fileKinds) ? nullptr : &*found;
}

}  // namespace

bool VsdxFormat::handles(std::string_view fileName) const { return kindOf(fileName) != nullptr; }

host::OpenResult VsdxFormat::open(host::Store& store, const std::string& fileName) const {
  ZipPackage package;
  if (const std::string wrong = package.open(fileName, limits_); !wrong.empty())
    return {{}, fileName + " " + wrong + "."};
  const host::DocumentId id = store.addDocument(std::string(lastStep(fileName)));
  if (const std::string wrong = readDocument(store, id, package); !wrong.empty()) {
    store.removeDocument(id);
    return {{}, fileName + " " + wrong + "."};
  }
  std::error_code error;
  const std::filesystem::path whole = std::filesystem::absolute(fileName, error).lexically_normal();
  host::Document& document = *store.document(id);
  if (!error) document.path = whole.parent_path().string();
  if (!document.path.ends_with('/')) document.path += '/';
  document.readOnly = (std::filesystem::status(fileName, error).permissions() & std::filesystem::perms::owner_write) ==
                      std::filesystem::perms::none;
  return {id, {}};
}

std::string VsdxFormat::save(const host::Store& store, host::DocumentId id, const std::string& fileName) const {
  const names::FileKind* const kind = kindOf(fileName);
  if (!kind) return fileName + " has no ending of a drawing; end its name with .vsdx, .vssx or .vstx.";
  const host::Document* const document = store.document(id);
  if (!document) return fileName + " was not written: the drawing is closed; open it again.";
  std::string bytes;
  std::string wrong = makePackage(writeDocument(store, *document, *kind), limits_, bytes);
  if (wrong.empty()) wrong = replaceFile(fileName, bytes);
  return wrong.empty() ? std::string() : fileName + " " + wrong + ".";
}

std::vector<std::string> VsdxFormat::leftOut(const host::Document& document, const std::string& fileName) const {
  const names::FileKind* const kind = kindOf(fileName);
  return kind ? leftOutBy(document, *kind) : std::vector<std::string>();
}

}  // namespace quorvel::formats
