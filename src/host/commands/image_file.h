// Pictures as files: their kind and their size.
#pragma once

#include <memory>
#include <string>

#include "host/sheet/sheet.h"

namespace quorvel::host {

struct ImageFile {
  std::shared_ptr<const ForeignData> data;  ///< null: not an image that we read, or no such file
  double width = 0, height = 0;             ///< inches
};

ImageFile readImageFile(const std::string& fileName);

}  // namespace quorvel::host
