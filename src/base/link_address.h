// What the address of a hyperlink names, as a user or a file dialog wrote it, and its form as a URI.
#pragma once

#include <string>
#include <string_view>

namespace quorvel {

enum class AddressKind {
  None,     ///< an empty address: the drawing itself
  Web,      ///< http, https and ftp, and what begins with "www."
  Mail,     ///< mailto
  File,     ///< a path, or an address of the scheme file
  Refused,  ///< every other scheme, because following it could start any program, and what is no address
};

struct LinkAddress {
  AddressKind kind = AddressKind::None;
  /// Web and Mail: a URI with all that must be escaped there escaped. File: the path with "/" between its steps and
  /// nothing escaped: "C:/Maps/x y.vsd", "//server/share/x.vsd", "/maps/x.vsd" or relative. Refused: why.
  std::string target;
};

LinkAddress readLinkAddress(std::string_view address);

/// True for "C:/…", "//server/…" and "/…"; the path's steps are separated by "/".
bool isAbsolutePath(std::string_view path);
bool hasDrive(std::string_view path);

/// Where a bookmark begins: the first "#" that is not part of a folder's or file's name, as far as the text shows it;
/// npos without one.
std::size_t bookmarkIn(std::string_view path);

/// The URI of a path, "file:///C:/Maps/x%20y.vsd" for an absolute one; a relative one stays relative.
std::string uriOfPath(std::string_view path);

/// The URI of a link that leads out of the drawing; the place in the target is its fragment. A relative path is joined
/// to `base`, a folder of the web or of files; it stays relative without one. Empty for an address that is empty or
/// refused.
std::string uriOfLink(std::string_view address, std::string_view place, std::string_view base = {});

/// The text as a part of a URI: "%20" for a space.
std::string escapedForUri(std::string_view text);
/// True for a text with line breaks, zero bytes and the like; programs overlook them or end a name there.
bool holdsControlCharacter(std::string_view text);
/// "%41" becomes "A"; a "%" without two digits behind it stays.
std::string unescapedUri(std::string_view text);

}  // namespace quorvel
