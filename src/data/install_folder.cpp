#include "data/install_folder.h"

#include "base/text.h"

namespace quorvel::addin {

std::string installedFile(Platform& platform, std::string_view relative) {
  std::string path = platform.addinFolder();
  while (!path.empty() && (path.back() == '/' || path.back() == '\\')) path.pop_back();
  std::string below = replaceAll(relative, "\\", "/");
  if (!below.starts_with('/')) below.insert(0, 1, '/');
  return path + below;
}

}  // namespace quorvel::addin
