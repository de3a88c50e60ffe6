// What the engine asks of the application when a hyperlink leads out of the drawings: the engine starts no program.
#pragma once

#include <string>

namespace quorvel::host {

enum class LinkTarget {
  Address,  ///< a URI of http, https, ftp or mailto, or of a web page in a file
  File,     ///< the absolute path of a document or folder
  Program,  ///< the absolute path of a file that does what its author wants when it is opened
};

class LinkOpener {
 public:
  virtual ~LinkOpener() = default;
  /// Opens it with the program that the system has for it. A program is started only after the user agreed; that the
  /// user did not is no failure. False when the system could not open it.
  virtual bool openLink(const std::string& target, LinkTarget kind) = 0;
};

}  // namespace quorvel::host
