#include "formats/vsdx/old_format.h"

#include <algorithm>
#include <filesystem>

#include "formats/package/part_name.h"

namespace quorvel::formats {
namespace {

constexpr std::string_view binaryEndings[] = {"vsd", "vss", "vst"};
constexpr std::string_view xmlEndings[] = {"vdx", "vsx", "vtx"};

template <class Endings>
bool endsLike(const Endings& endings, std::string_view fileName) {
  return std::ranges::find(endings, extensionOf(fileName)) != std::end(endings);
}

}  // namespace

bool OldFormat::handles(std::string_view fileName) const {
  return endsLike(binaryEndings, fileName) || endsLike(xmlEndings, fileName);
}

host::OpenResult OldFormat::open(host::Store&, const std::string& fileName) const {
  std::error_code error;
  if (!std::filesystem::exists(fileName, error))
    return {{}, fileName + " does not exist; check the name and the folder."};
  if (endsLike(binaryEndings, fileName))
    return {{},
            fileName + " is in the old binary format (." + extensionOf(fileName) +
                "), which cannot be read; open it in a program that can and save it as .vsdx."};
  return {{},
          fileName + " is an XML drawing of an older release (." + extensionOf(fileName) +
              "), which cannot be read yet; save it as .vsdx first."};
}

std::string OldFormat::save(const host::Store&, host::DocumentId, const std::string& fileName) const {
  return fileName +
         " was not written: drawings are not written in the format of older releases; end its name with .vsdx.";
}

}  // namespace quorvel::formats
