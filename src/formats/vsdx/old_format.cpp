#include "formats/vsdx/old_format.h"

#include <algorithm>
#include <filesystem>

#include "formats/package/part_name.h"

namespace quorvel::formats {
namespace {

constexpr std::string_view binaryEndings[] = {"vsd", "vss", "vst"};

}  // namespace

bool OldFormat::handles(std::string_view fileName) const {
  return std::ranges::find(binaryEndings, extensionOf(fileName)) != std::end(binaryEndings);
}

host::OpenResult OldFormat::open(host::Store&, const std::string& fileName) const {
  std::error_code error;
  if (!std::filesystem::exists(fileName, error))
    return {{}, fileName + " does not exist; check the name and the folder."};
  return {{},
          fileName + " is in the old binary format (." + extensionOf(fileName) +
              "), which cannot be read; open it in a program that can and save it as .vsdx."};
}

std::string OldFormat::save(const host::Store&, host::DocumentId, const std::string& fileName) const {
  return fileName +
         " was not written: drawings are not written in the old binary format; end its name with .vsdx or .vdx.";
}

}  // namespace quorvel::formats
