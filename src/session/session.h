// One running Quorvel without a screen: the host in memory, its file formats and fonts, and the add-in connected to it.
#pragma once

#include <memory>
#include <string>

#include "connect/dsr_visio_connect.h"
#include "host/automation/in_memory_host.h"
#include "render/text/text_metrics.h"
#include "session/document_themes.h"
#include "session/platform_link_opener.h"
#include "session/recovery.h"
#include "session/reports_dialog.h"
#include "session/session_platform.h"

namespace quorvel {

struct SessionOptions {
  std::string version = "12.0";
  /// Empty: the install folder found at run time, see findInstallFolder.
  std::string installFolder;
  /// Empty: the user's own.
  std::string configurationFolder;
  /// False for a host that the add-in is not connected to.
  bool connectAddin = true;
  /// Where copies of unsaved work are kept; empty: none are.
  std::string recoveryFolder;
};

class Session {
 public:
  explicit Session(SessionOptions options = {});
  ~Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  Application app() { return host_.app(); }
  host::InMemoryHost& host() { return host_; }
  host::Engine& engine() { return host_.engine(); }
  HeadlessPlatform& platform() { return platform_; }
  addin::dsrVisioConnect& addin() { return addin_; }
  /// Null when none are kept.
  RecoveryCopies* recovery() { return recovery_.get(); }

  const std::string& installFolder() const { return installFolder_; }
  std::string templatePath() const { return installFolder_ + "/Quorvel.vstx"; }
  std::string stencilPath() const { return installFolder_ + "/Quorvel.vssx"; }

 private:
  std::string installFolder_;
  render::PangoTextMetrics metrics_;
  DocumentThemes themes_;
  host::InMemoryHost host_;
  SessionPlatform platform_;
  PlatformLinkOpener linkOpener_{platform_};
  PlatformReportsDialog reportsDialog_{host_.engine(), platform_};
  addin::dsrVisioConnect addin_;
  std::unique_ptr<RecoveryCopies> recovery_;
};

/// While it lives, the document's shapes do not show that they are selected. That is no step and no change of it.
class WithoutSelectionMarks {
 public:
  WithoutSelectionMarks(Session& session, const Document& document);
  ~WithoutSelectionMarks();
  WithoutSelectionMarks(const WithoutSelectionMarks&) = delete;
  WithoutSelectionMarks& operator=(const WithoutSelectionMarks&) = delete;

 private:
  Session& session_;
  Document document_;
};

/// QUORVEL_HOME where it is set, else the folder "share/quorvel" or "data" that is next to or above the program's
/// own. Empty when there is none.
std::string findInstallFolder();

}  // namespace quorvel
