// Paths of link targets as texts: absolute, and relative to the folder of the drawing. No file is looked at.
//
// A path is of the kind that its text shows: "C:\…" or "\\server\…", or one that begins with "/". Drawings carry paths
// of both kinds to every machine.
#pragma once

#include <string>
#include <string_view>

#include "model/host_model.h"

namespace quorvel::addin {

/// The text before its first NUL character.
std::string StripTerminator(std::string_view text);

/// The text up to its last "/" or "\", included; all of it without one.
std::string GetPath01(std::string_view path);
/// What follows the last "/" or "\".
std::string fileNameOf(std::string_view path);
/// What stands before that.
std::string folderOf(std::string_view path);

/// A path that does not depend on a folder: with ":\" anywhere, or "\\" or "/" at the start.
bool holdsFullPath(std::string_view text);

/// True when one path can be written relative to the other: the same drive or share by their first three characters, or
/// two paths that begin with "/".
bool haveSameRoot(std::string_view a, std::string_view b);

/// The file as seen from the folder, without a separator at the start: "sub\x.vsd", "..\other\x.vsd". Empty when they
/// have no common root, when the target is the folder itself, and for 260 characters and more off "/".
/// The rules are those of the Windows function PathRelativePathTo, for a folder that ends in "\".
std::string get_relative_path_to(std::string_view fromFolder, std::string_view toPath);

/// The document's folder and the text, less a first "..\" and what stands before it. The result is no normalised path:
/// it only tells whether a link points at the drawing itself.
std::string get_Rel(const Document& document, std::string_view relative);

/// Folder and name of the document. Empty when it can't be read.
std::string fullPathOf(const Document& document);
/// True unless the path is that of the document, letter for letter.
bool notCurrentDOc(const Document& document, std::string_view path);

/// The document that is open from this path, in any letter case; null when there is none.
Document openDocument(const Application& application, std::string_view path);

}  // namespace quorvel::addin
