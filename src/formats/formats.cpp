#include "formats/formats.h"

#include "formats/vdx/vdx_format.h"
#include "formats/vsdx/old_format.h"
#include "formats/vsdx/vsdx_format.h"

namespace quorvel::formats {
namespace {

struct Formats {
  VsdxFormat package;
  VdxFormat singleFile;
  OldFormat binary;
};

const Formats& known() {
  static const Formats formats;
  return formats;
}

}  // namespace

const std::vector<const host::DocumentFormat*>& allFormats() {
  static const std::vector<const host::DocumentFormat*> formats{&known().package, &known().singleFile, &known().binary};
  return formats;
}

const host::DocumentFormat* formatFor(std::string_view fileName) { return host::formatFor(allFormats(), fileName); }

std::vector<std::string> leftOutBySave(const host::Document& document, const std::string& fileName) {
  const Formats& formats = known();
  if (formats.package.handles(fileName)) return formats.package.leftOut(document, fileName);
  if (formats.singleFile.handles(fileName)) return formats.singleFile.leftOut(document, fileName);
  return {};
}

}  // namespace quorvel::formats
