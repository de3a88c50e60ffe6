// The dialog of the Reports command: the definitions of the drawing, and the file that the chosen report is written to.
#pragma once

#include <string>

#include "host/engine/engine.h"
#include "model/platform.h"

namespace quorvel {

class PlatformReportsDialog : public host::ReportsDialog {
 public:
  PlatformReportsDialog(host::Engine& engine, Platform& platform) : engine_(engine), platform_(platform) {}

  /// The form "frmReports". On OK the user names a file, whose ending decides the format; it is written and opened with
  /// the program that the system has for it.
  void showReports(host::DocumentId document) override;

 private:
  std::string chosenFile(const std::string& startFolder);
  void complain(const std::string& sentence);

  host::Engine& engine_;
  Platform& platform_;
};

}  // namespace quorvel
