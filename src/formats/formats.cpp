#include "formats/formats.h"

#include "formats/vdx/vdx_format.h"
#include "formats/vsdx/old_format.h"
#include "formats/vsdx/vsdx_format.h"

namespace quorvel::formats {

const std::vector<const host::DocumentFormat*>& allFormats() {
  static const VsdxFormat vsdx;
  static const VdxFormat vdx;
  static const OldFormat old;
  static const std::vector<const host::DocumentFormat*> formats{&vsdx, &vdx, &old};
  return formats;
}

const host::DocumentFormat* formatFor(std::string_view fileName) { return host::formatFor(allFormats(), fileName); }

}  // namespace quorvel::formats
