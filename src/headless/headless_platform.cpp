#include "headless/headless_platform.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <system_error>

#include "base/basic_text.h"
#include "base/profile_text.h"
#include "base/text.h"
#include "headless/file_filter.h"

namespace quorvel {
namespace {

namespace fs = std::filesystem;

fs::path pathOf(std::string_view utf8) { return fs::path(std::u8string(utf8.begin(), utf8.end())); }

std::string textOf(const fs::path& path) {
  const std::u8string utf8 = path.u8string();
  return std::string(utf8.begin(), utf8.end());
}

Maybe<std::string> contentOf(const fs::path& path) {
  std::error_code error;
  if (!fs::is_regular_file(path, error)) return {};
  std::ifstream file(path, std::ios::binary);
  std::ostringstream content;
  // Writing nothing of an empty file sets the stream's fail bit, which is no failure here.
  if (!file || (file.peek() != std::ifstream::traits_type::eof() && !(content << file.rdbuf()))) return {};
  return content.str();
}

/// Writes a file next to it and renames that, so that a full disk does not cost the old content.
bool replaceFile(const fs::path& path, std::string_view content) {
  std::error_code error;
  fs::create_directories(path.parent_path(), error);
  fs::path beside = path;
  beside += ".new";
  {
    std::ofstream file(beside, std::ios::binary | std::ios::trunc);
    file.write(content.data(), static_cast<std::streamsize>(content.size()));
    file.flush();
    if (!file) {
      file.close();
      fs::remove(beside, error);
      return false;
    }
  }
  fs::rename(beside, path, error);
  if (!error) return true;
  std::error_code ignored;
  fs::remove(beside, ignored);
  return false;
}

std::string usersConfigurationFolder() {
  if (const char* base = std::getenv("XDG_CONFIG_HOME"); base && *base) return textOf(fs::path(base) / "quorvel");
  if (const char* home = std::getenv("HOME"); home && *home) return textOf(fs::path(home) / ".config" / "quorvel");
  return {};
}

}  // namespace

MessageAnswer mostCarefulAnswer(MessageButtons buttons) {
  switch (buttons) {
    case MessageButtons::YesNoCancel:
    case MessageButtons::OkCancel:
      return MessageAnswer::Cancel;
    case MessageButtons::YesNo:
      return MessageAnswer::No;
    case MessageButtons::Ok:
      break;
  }
  return MessageAnswer::Ok;
}

HeadlessPlatform::HeadlessPlatform(std::string addinFolder, std::string configurationFolder)
    : addinFolder_(std::move(addinFolder)), configurationFolder_(std::move(configurationFolder)) {
  if (configurationFolder_.empty()) configurationFolder_ = usersConfigurationFolder();
}

/// Callers write the file's name in several letter cases; they all mean one file.
std::string HeadlessPlatform::profilePath(std::string_view file) const {
  if (configurationFolder_.empty()) return {};
  const fs::path folder = pathOf(configurationFolder_);
  std::error_code error;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
    if (equalIgnoringCase(textOf(entry->path().filename()), file)) return textOf(entry->path());
  }
  return textOf(folder / pathOf(file));
}

std::string HeadlessPlatform::readProfile(std::string_view file, std::string_view section, std::string_view key,
                                          std::string_view fallback, int bufferSize) {
  const Maybe<std::string> content = contentOf(pathOf(profilePath(file)));
  const Maybe<std::string> value = content ? profileValue(*content, section, key) : Maybe<std::string>();
  return left(value.or_(std::string(fallback)), std::max(bufferSize - 1, 0));
}

bool HeadlessPlatform::writeProfile(std::string_view file, std::string_view section, std::string_view key,
                                    std::string_view value) {
  const std::string path = profilePath(file);
  if (path.empty()) return false;
  const Maybe<std::string> before = contentOf(pathOf(path));
  // A file that exists and can't be read would be lost by writing over it.
  if (!before && fileExists(path)) return false;
  const Maybe<std::string> after = withProfileValue(before.or_({}), section, key, value);
  return after && replaceFile(pathOf(path), *after);
}

std::string HeadlessPlatform::currentFolder() {
  if (!currentFolder_.empty()) return currentFolder_;
  std::error_code error;
  return textOf(fs::current_path(error));
}

bool HeadlessPlatform::setCurrentFolder(std::string_view folder) {
  if (!folderExists(folder)) return false;
  currentFolder_ = folder;
  return true;
}

bool HeadlessPlatform::shellOpen(std::string_view target) {
  asked.push_back({Asked::Kind::ShellOpen, std::string(target)});
  return onShellOpen && onShellOpen(target);
}

MessageAnswer HeadlessPlatform::showMessage(const MessageBox& box) {
  asked.push_back({Asked::Kind::Message, box.text});
  return onMessage ? onMessage(box) : mostCarefulAnswer(box.buttons);
}

Maybe<std::string> HeadlessPlatform::chooseFile(const FileDialog& dialog) {
  asked.push_back({Asked::Kind::FileDialog, dialog.title});
  if (!onFileDialog) return {};
  FileDialog shown = dialog;
  shown.filter = withNewerForms(dialog.filter);
  return onFileDialog(shown);
}

void HeadlessPlatform::showModal(Form& form) {
  asked.push_back({Asked::Kind::Form, form.name()});
  form.open();
  if (form.isOpen() && onForm) onForm(form);
  if (form.isOpen()) form.close();
  // No user could close a form that refuses to close.
  if (form.isOpen()) form.hide();
}

void HeadlessPlatform::showNote(Form& form) { form.open(); }

bool HeadlessPlatform::fileExists(std::string_view path) {
  std::error_code error;
  return fs::is_regular_file(pathOf(path), error);
}

bool HeadlessPlatform::folderExists(std::string_view path) {
  std::error_code error;
  return fs::is_directory(pathOf(path), error);
}

Maybe<std::vector<std::string>> HeadlessPlatform::filesIn(std::string_view folder) {
  std::error_code error;
  fs::directory_iterator entry(pathOf(folder), error);
  if (error) return {};
  std::vector<std::string> names;
  for (const fs::directory_iterator end; entry != end; entry.increment(error)) {
    std::error_code unreadable;
    if (entry->is_regular_file(unreadable)) names.push_back(textOf(entry->path().filename()));
  }
  if (error) return {};
  std::sort(names.begin(), names.end());
  return names;
}

Maybe<std::string> HeadlessPlatform::readTextFile(std::string_view path) {
  Maybe<std::string> content = contentOf(pathOf(path));
  constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
  if (content && content->starts_with(byteOrderMark)) return content->substr(byteOrderMark.size());
  return content;
}

bool HeadlessPlatform::createTextFile(std::string_view path) {
  if (path.size() >= 2 && path[1] == ':') return false;
  return bool(std::ofstream(pathOf(path), std::ios::binary | std::ios::trunc));
}

std::unique_ptr<Browser> HeadlessPlatform::openBrowser(BrowserEvents events) {
  asked.push_back({Asked::Kind::Browser, {}});
  return onBrowser ? onBrowser(std::move(events)) : nullptr;
}

}  // namespace quorvel
