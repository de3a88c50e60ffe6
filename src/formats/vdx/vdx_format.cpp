#include "formats/vdx/vdx_format.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "formats/package/atomic_file.h"
#include "formats/package/part_name.h"
#include "formats/package/saving_limits.h"
#include "formats/vdx/document_reader.h"
#include "formats/vdx/document_writer.h"

namespace quorvel::formats {
namespace {

constexpr std::string_view endings[] = {"vdx", "vsx", "vtx"};
constexpr std::string_view stencilEnding = "vsx";

/// Empty when the bytes are there; else the end of a sentence.
std::string load(const std::string& fileName, const PackageLimits& limits, std::string& bytes) {
  std::error_code error;
  if (!std::filesystem::exists(fileName, error)) return "does not exist; check the name and the folder";
  if (!std::filesystem::is_regular_file(fileName, error)) return "is no file; choose a drawing";
  const std::uintmax_t size = std::filesystem::file_size(fileName, error);
  if (!error && size > limits.partBytes) return "is larger than any drawing; choose another file";
  std::ifstream file(fileName, std::ios::binary);
  if (error || !file) return "cannot be read; check that you may read it";
  bytes.resize(static_cast<std::size_t>(size));
  file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  bytes.resize(static_cast<std::size_t>(file.gcount()));
  return {};
}

}  // namespace

bool VdxFormat::handles(std::string_view fileName) const {
  return std::ranges::find(endings, extensionOf(fileName)) != std::end(endings);
}

host::OpenResult VdxFormat::open(host::Store& store, const std::string& fileName) const {
  std::string bytes;
  if (const std::string wrong = load(fileName, limits_, bytes); !wrong.empty())
    return {{}, fileName + " " + wrong + "."};
  const host::DocumentId id = store.addDocument(std::string(lastStep(fileName)));
  if (const std::string wrong = vdx::readDocument(store, id, bytes); !wrong.empty()) {
    store.removeDocument(id);
    return {{}, fileName + " " + wrong + "."};
  }
  std::error_code error;
  const std::filesystem::path whole = std::filesystem::absolute(fileName, error).lexically_normal();
  host::Document& document = *store.document(id);
  document.isStencil = extensionOf(fileName) == stencilEnding;
  if (!error) document.path = whole.parent_path().string();
  if (!document.path.ends_with('/')) document.path += '/';
  document.readOnly = (std::filesystem::status(fileName, error).permissions() & std::filesystem::perms::owner_write) ==
                      std::filesystem::perms::none;
  return {id, {}};
}

std::string VdxFormat::save(const host::Store& store, host::DocumentId id, const std::string& fileName) const {
  if (!handles(fileName)) return fileName + " has no ending of an XML drawing; end its name with .vdx, .vsx or .vtx.";
  const host::Document* const document = store.document(id);
  if (!document) return fileName + " was not written: the drawing is closed; open it again.";
  const std::string xml = vdx::writeDocument(store, *document);
  std::string wrong = whyNotSaved(xml, limits_);
  if (wrong.empty()) wrong = replaceFile(fileName, xml);
  return wrong.empty() ? std::string() : fileName + " " + wrong + ".";
}

std::vector<std::string> VdxFormat::leftOut(const host::Document& document, const std::string&) const {
  return vdx::leftOutBy(document);
}

}  // namespace quorvel::formats
