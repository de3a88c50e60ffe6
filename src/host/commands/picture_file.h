// Pictures as files: their kind and their size.
#pragma once

#include <memory>
#include <string>

#include "host/sheet/sheet.h"

namespace quorvel::host {

struct PictureFile {
  std::shared_ptr<const ForeignData> data;  ///< null: not a picture that we read, or no such file
  double width = 0, height = 0;             ///< inches
};

PictureFile readPictureFile(const std::string& fileName);

}  // namespace quorvel::host
