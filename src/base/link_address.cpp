#include "base/link_address.h"

#include <algorithm>
#include <filesystem>
#include <optional>

#include "base/text.h"

namespace quorvel {
namespace {

bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool isDigit(char c) { return c >= '0' && c <= '9'; }

int hexDigit(char c) {
  if (isDigit(c)) return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

bool isEscapeAt(std::string_view text, std::size_t at) {
  return at + 2 < text.size() && text[at] == '%' && hexDigit(text[at + 1]) >= 0 && hexDigit(text[at + 2]) >= 0;
}

/// Letters, digits, "-._~" and what else is in `allowed` stay; other bytes are escaped.
std::string escaped(std::string_view text, std::string_view allowed, bool keepsEscapes) {
  constexpr char digits[] = "0123456789ABCDEF";
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    const bool stays = isLetter(c) || isDigit(c) || std::string_view("-._~").find(c) != std::string_view::npos ||
                       allowed.find(c) != std::string_view::npos || (keepsEscapes && isEscapeAt(text, i));
    if (stays) {
      result += c;
    } else {
      const auto byte = static_cast<unsigned char>(c);
      result += {'%', digits[byte >> 4], digits[byte & 15]};
    }
  }
  return result;
}

/// True when the address names a server: "http://server", and not "http:x" or "http:///x".
bool namesServer(std::string_view rest) {
  if (!rest.starts_with("//")) return false;
  std::string_view server = rest.substr(2, rest.find_first_of("/?#\\", 2) - 2);
  server = server.substr(server.rfind('@') + 1);
  return !server.empty() && server[0] != ':';
}

/// "mailto:" and what is behind it, with those fields that only fill in a message: mail programs know others that
/// attach files. Nothing when a line break would begin a field of its own.
std::optional<std::string> mailUri(std::string_view rest) {
  constexpr std::string_view fields[] = {"to", "cc", "bcc", "subject", "body"};
  constexpr std::string_view allowed = ":/@!$()*+,;=";
  const std::size_t query = std::min(rest.find('?'), rest.size());
  const std::string_view receivers = rest.substr(0, query);
  if (holdsControlCharacter(unescapedUri(receivers))) return {};
  std::string uri = "mailto:" + escaped(receivers, allowed, true);
  char separator = '?';
  for (const std::string_view field : splitAt(rest.substr(std::min(query + 1, rest.size())), '&')) {
    const std::string_view name = field.substr(0, field.find('='));
    const bool isKept =
        std::ranges::any_of(fields, [&](std::string_view each) { return equalIgnoringCase(each, name); });
    if (!isKept || (!equalIgnoringCase(name, "body") && holdsControlCharacter(unescapedUri(field)))) continue;
    uri += separator + escaped(field, allowed, true);
    separator = '&';
  }
  return uri;
}

/// A web address that is one already stays as it is.
std::string webUri(std::string_view text) {
  const std::size_t fragment = std::min(text.find('#'), text.size());
  constexpr std::string_view allowed = ":/?[]@!$&()*+,;=";
  std::string uri = escaped(text.substr(0, fragment), allowed, true);
  if (fragment < text.size()) uri += "#" + escaped(text.substr(fragment + 1), allowed, true);
  return uri;
}

/// The scheme in front of a colon; empty for a path. One letter is a drive.
std::string_view schemeOf(std::string_view address) {
  const std::size_t colon = address.find(':');
  if (colon == std::string_view::npos || colon < 2 || !isLetter(address[0])) return {};
  const std::string_view scheme = address.substr(0, colon);
  const bool isScheme =
      std::ranges::all_of(scheme, [](char c) { return isLetter(c) || isDigit(c) || c == '+' || c == '-' || c == '.'; });
  return isScheme ? scheme : std::string_view();
}

std::string withSlashes(std::string_view path) {
  std::string result(path);
  std::ranges::replace(result, '\\', '/');
  return result;
}

/// The path in "file:///C:/x", "file:///x", "file://server/x", "file:x" and, as some programs write it, "file://C:\x".
std::string pathOfFileUri(std::string_view rest) {
  std::string path = unescapedUri(withSlashes(rest));
  const std::size_t slashes = std::min(path.find_first_not_of('/'), path.size());
  if (hasDrive(std::string_view(path).substr(slashes))) return path.substr(slashes);
  if (slashes >= 3) return path.substr(slashes == 3 ? 2 : slashes - 2);
  if (std::string_view(path).substr(slashes).starts_with("localhost/") && slashes == 2) return path.substr(11);
  return path;
}

std::string_view lastStepOf(std::string_view path) {
  const std::size_t slash = path.rfind('/');
  return slash == std::string_view::npos ? path : path.substr(slash + 1);
}

/// `relative` as seen from a folder of the web; "..", as often as it has one, leads to the folder above.
std::string joinedUri(std::string_view folder, std::string_view relative) {
  folder = folder.substr(0, folder.find_first_of("?#"));
  const std::size_t path = std::min(folder.find('/', folder.find("//") + 2), folder.size());
  const std::string steps = std::string(folder.substr(path)) + "/" + std::string(relative);
  return std::string(folder.substr(0, path)) + std::filesystem::path(steps).lexically_normal().generic_string();
}

LinkAddress refused(const char* reason) { return {AddressKind::Refused, reason}; }

}  // namespace

bool holdsControlCharacter(std::string_view text) {
  return std::ranges::any_of(text, [](char c) { return static_cast<unsigned char>(c) < ' ' || c == 127; });
}

LinkAddress readLinkAddress(std::string_view given) {
  const std::string_view address = trimmed(given);
  if (address.empty()) return {};
  // Programs overlook control characters, so that "java\tscript:" would be one of the refused schemes.
  constexpr const char* control = "it has a control character in it";
  if (holdsControlCharacter(address)) return refused(control);
  const std::string_view scheme = schemeOf(address);
  if (scheme.empty()) {
    const bool isWeb = startsWithIgnoringCase(address, "www.") && address.find('\\') == std::string_view::npos;
    if (isWeb) return {AddressKind::Web, webUri("http://" + std::string(address))};
    return {AddressKind::File, withSlashes(address)};
  }
  const std::string_view rest = address.substr(scheme.size() + 1);
  for (const std::string_view web : {"http", "https", "ftp"}) {
    if (!equalIgnoringCase(scheme, web)) continue;
    return namesServer(rest) ? LinkAddress{AddressKind::Web, webUri(address)} : refused("it names no server");
  }
  if (equalIgnoringCase(scheme, "mailto")) {
    const std::optional<std::string> uri = mailUri(rest);
    return uri ? LinkAddress{AddressKind::Mail, *uri} : refused(control);
  }
  if (equalIgnoringCase(scheme, "file")) {
    const std::string path = pathOfFileUri(rest);
    return holdsControlCharacter(path) ? refused(control) : LinkAddress{AddressKind::File, path};
  }
  return refused("only files and addresses of http, https, ftp and mailto are");
}

bool hasDrive(std::string_view path) { return path.size() >= 2 && isLetter(path[0]) && path[1] == ':'; }

bool isAbsolutePath(std::string_view path) { return path.starts_with('/') || hasDrive(path); }

std::size_t bookmarkIn(std::string_view path) {
  for (std::size_t mark = path.find('#'); mark != std::string_view::npos; mark = path.find('#', mark + 1)) {
    const std::string_view behind = path.substr(mark + 1);
    if (behind.find('/') != std::string_view::npos) continue;
    const std::string_view file = lastStepOf(path.substr(0, mark));
    const std::size_t dot = file.rfind('.');
    if (dot == std::string_view::npos || dot == 0) continue;
    // "plan v1.0#2.doc" is a name; a place in a web page may have a dot.
    const bool mayHaveDots = startsWithIgnoringCase(file.substr(dot + 1), "htm");
    if (behind.find('.') == std::string_view::npos || mayHaveDots) return mark;
  }
  return std::string_view::npos;
}

std::string uriOfPath(std::string_view path) {
  std::string uri = escaped(path, ":/@!$&()*+,;=", false);
  if (path.starts_with("//")) return "file:" + uri;
  if (path.starts_with('/')) return "file://" + uri;
  if (hasDrive(path)) return "file:///" + uri;
  // What is in front of a colon would be a scheme.
  const std::string_view firstStep = path.substr(0, path.find('/'));
  return firstStep.find(':') == std::string_view::npos ? uri : "./" + uri;
}

std::string uriOfLink(std::string_view address, std::string_view place, std::string_view base) {
  const LinkAddress link = readLinkAddress(address);
  switch (link.kind) {
    case AddressKind::None:
    case AddressKind::Refused:
      return {};
    case AddressKind::Web:
      if (!place.empty()) return link.target.substr(0, link.target.find('#')) + "#" + escapedForUri(place);
      return link.target;
    case AddressKind::Mail:
      return link.target;
    case AddressKind::File:
      break;
  }
  std::string path = link.target, fragment(place);
  if (const std::size_t mark = bookmarkIn(path); place.empty() && mark != std::string::npos) {
    fragment = unescapedUri(path.substr(mark + 1));
    path.erase(mark);
  }
  // Programs write relative addresses with "%20" as well; that of a name itself is seldom.
  if (schemeOf(trimmed(address)).empty()) path = unescapedUri(path);
  const LinkAddress folder = isAbsolutePath(path) ? LinkAddress() : readLinkAddress(base);
  if (folder.kind == AddressKind::File) path = folder.target + "/" + path;
  std::string uri = folder.kind == AddressKind::Web ? joinedUri(folder.target, uriOfPath(path)) : uriOfPath(path);
  return fragment.empty() ? uri : uri + "#" + escapedForUri(fragment);
}

std::string escapedForUri(std::string_view text) { return escaped(text, ":/?@!$&()*+,;=", false); }

std::string unescapedUri(std::string_view text) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (isEscapeAt(text, i)) {
      result += static_cast<char>(hexDigit(text[i + 1]) * 16 + hexDigit(text[i + 2]));
      i += 2;
    } else {
      result += text[i];
    }
  }
  return result;
}

}  // namespace quorvel
