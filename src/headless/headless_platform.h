// The platform services without a screen: files and profile as on a desktop, dialogs and questions answered by
// callbacks, and a record of what was asked.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "model/form.h"
#include "model/platform.h"

namespace quorvel {

class HeadlessPlatform : public Platform {
 public:
  /// `addinFolder` is the install folder, in which Images, Icons and the like are looked up. The profile file lies in
  /// `configurationFolder`; when that is empty, in "quorvel" of the user's configuration folder.
  explicit HeadlessPlatform(std::string addinFolder, std::string configurationFolder = {});

  // The callbacks. Without one a form is closed by its close box, a question gets its most careful answer (Cancel,
  // else No, else Ok), a file dialog is cancelled and no browser is found. A form that the callback leaves open is
  // closed likewise.
  std::function<void(Form&)> onForm;
  std::function<MessageAnswer(const MessageBox&)> onMessage;
  std::function<Maybe<std::string>(const FileDialog&)> onFileDialog;
  std::function<std::unique_ptr<Browser>(BrowserEvents)> onBrowser;
  /// Opens what a desktop would open with another program; says whether it did.
  std::function<bool(std::string_view)> onShellOpen;

  /// One thing that a person at a screen would have been shown.
  struct Asked {
    enum class Kind { Form, Message, FileDialog, ShellOpen, Browser };
    Kind kind;
    std::string text;  ///< the form's name, the message, the file dialog's title, the target; none for a browser
  };
  std::vector<Asked> asked;
  int beeps = 0;

  std::string readProfile(std::string_view file, std::string_view section, std::string_view key,
                          std::string_view fallback, int bufferSize) override;
  bool writeProfile(std::string_view file, std::string_view section, std::string_view key,
                    std::string_view value) override;

  /// That of the process until it is set.
  std::string currentFolder() override;
  /// Fails for a folder that does not exist.
  bool setCurrentFolder(std::string_view folder) override;
  std::string addinFolder() override { return addinFolder_; }

  /// Recorded, and refused without a callback: a script must not start other programs unexpectedly.
  bool shellOpen(std::string_view target) override;
  void beep() override { ++beeps; }
  /// There is no clipboard that a button could paste from.
  bool placeFace(std::string_view, unsigned) override { return false; }
  bool clearClipboard() override { return true; }

  MessageAnswer showMessage(const MessageBox& box) override;
  Maybe<std::string> chooseFile(const FileDialog& dialog) override;
  void showModal(Form& form) override;
  /// Is not recorded: nothing is asked.
  void showNote(Form& form) override;

  bool fileExists(std::string_view path) override;
  bool folderExists(std::string_view path) override;
  Maybe<std::vector<std::string>> filesIn(std::string_view folder) override;
  Maybe<std::string> readTextFile(std::string_view path) override;
  /// Fails for a path with a drive letter: here it would be a file in the current folder with "c:\\" in its name.
  bool createTextFile(std::string_view path) override;
  /// Fails for every file: this folder has no XML reader. A platform that can load report definitions overrides it.
  Maybe<std::string> readXmlFile(std::string_view) override { return {}; }

  /// Fails for every file: this folder has no reader of them.
  Maybe<std::vector<std::string>> bookmarksOf(std::string_view) override { return {}; }
  std::unique_ptr<Browser> openBrowser(BrowserEvents events) override;

 private:
  std::string profilePath(std::string_view file) const;

  std::string addinFolder_;
  std::string configurationFolder_;
  std::string currentFolder_;
};

/// The most careful answer that the buttons offer.
MessageAnswer mostCarefulAnswer(MessageButtons buttons);

}  // namespace quorvel
