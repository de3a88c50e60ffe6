// What the add-in needs from the machine and the user. Passed when it connects; the desktop implements it with real
// windows, scripts and tests with prepared answers.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/maybe.h"

namespace quorvel {

class Form;

enum class MessageButtons { Ok, YesNo, YesNoCancel, OkCancel };
enum class MessageIcon { None, Stop, Question, Information };
enum class MessageAnswer { Ok, Yes, No, Cancel };

struct MessageBox {
  std::string text;
  std::string title = "Quorvel";
  MessageButtons buttons = MessageButtons::Ok;
  MessageIcon icon = MessageIcon::None;
  /// The answer that loses nothing, where agreeing may do harm outside of the drawing. A platform that agrees to
  /// every question gives it instead, and a window makes its button the one that Enter presses.
  Maybe<MessageAnswer> carefulAnswer = {};
};

struct FileDialog {
  std::string title;
  /// Pairs as "drawing file (*.vsd;*.vdx)|*.vsd;*.vdx|…". The platform adds the newer forms of drawings.
  std::string filter;
  std::string startFolder;
};

/// A browser window whose address is followed. Destroying the object stops that; it does not close the window.
class Browser {
 public:
  virtual ~Browser() = default;
};

struct BrowserEvents {
  std::function<void(const std::string& address)> navigated;  ///< each time a page has been loaded
  std::function<void()> quit;                                 ///< the user closed the window
};

/// Every call may fail and reports it by its value; nothing throws.
class Platform {
 public:
  virtual ~Platform() = default;

  // Profile files. `file` is a bare name, looked up in the user's configuration folder; sections and keys match in any
  // letter case. The read gives `fallback` when file, section or key is missing, cut at `bufferSize` - 1 characters.
  virtual std::string readProfile(std::string_view file, std::string_view section, std::string_view key,
                                  std::string_view fallback, int bufferSize) = 0;
  virtual bool writeProfile(std::string_view file, std::string_view section, std::string_view key,
                            std::string_view value) = 0;

  /// The add-in's own current folder. The folder of the process is never changed: it belongs to the command
  /// line or script that we run in, whose relative paths must keep their meaning.
  virtual std::string currentFolder() = 0;
  virtual bool setCurrentFolder(std::string_view folder) = 0;
  /// The folder of the add-in's own file: Icons, Images, Reports and Help are looked up below it.
  virtual std::string addinFolder() = 0;

  /// Opens a file or address with the program that the system has for it.
  virtual bool shellOpen(std::string_view target) = 0;
  virtual void beep() = 0;
  /// Puts a button face and its mask on the clipboard for PasteFace; pixels of `transparentColour` (0xBBGGRR) are
  /// transparent.
  virtual bool placeFace(std::string_view pictureFile, unsigned transparentColour) = 0;
  virtual bool clearClipboard() = 0;

  virtual MessageAnswer showMessage(const MessageBox& box) = 0;
  /// Nothing when cancelled.
  virtual Maybe<std::string> chooseFile(const FileDialog& dialog) = 0;
  /// Opens the form and returns when it was hidden or closed.
  virtual void showModal(Form& form) = 0;
  /// Opens the form and returns at once. The caller hides it.
  virtual void showNote(Form& form) = 0;

  virtual bool fileExists(std::string_view path) = 0;
  virtual bool folderExists(std::string_view path) = 0;
  /// Names of the files of a folder, sorted, without the folder.
  virtual Maybe<std::vector<std::string>> filesIn(std::string_view folder) = 0;
  virtual Maybe<std::string> readTextFile(std::string_view path) = 0;
  /// Creates an empty file; one that exists loses its content.
  virtual bool createTextFile(std::string_view path) = 0;
  /// Fails for a file that is no well-formed XML; gives its text in UTF-8.
  virtual Maybe<std::string> readXmlFile(std::string_view path) = 0;

  /// Bookmark names of a word-processor file.
  virtual Maybe<std::vector<std::string>> bookmarksOf(std::string_view path) = 0;
  /// Opens a browser at the user's home page; null where there is none. The events come on the caller's thread, while
  /// its dialog is open.
  virtual std::unique_ptr<Browser> openBrowser(BrowserEvents events) = 0;
};

}  // namespace quorvel
