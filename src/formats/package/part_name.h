// Names of parts in a package: checking, resolving what a relationship points to, and the way back.
#pragma once

#include <string>
#include <string_view>

namespace quorvel::formats {

/// True for a name that stays inside the package: no empty, "." or ".." step, no backslash, colon or control character.
/// `name` without a leading "/".
bool isSafePartName(std::string_view name);

/// Part names are compared without regard to ASCII case; this is the form to compare.
std::string partKey(std::string_view name);

/// The part that `target` means in the relationships of `source` ("/visio/pages/page1.xml"; "/" is the
/// package itself). Empty when the target leads out of the package.
std::string resolveTarget(std::string_view source, std::string_view target);

/// The shortest relative target from `source` to `part`, both absolute.
std::string relativeTarget(std::string_view source, std::string_view part);

/// "/visio/_rels/document.xml.rels" for "/visio/document.xml"; "/_rels/.rels" for "/".
std::string relationshipsPartOf(std::string_view source);

/// The extension in lower case, without the dot; empty when there is none.
std::string extensionOf(std::string_view name);

/// The name behind the last "/" or "\".
std::string_view lastStep(std::string_view path);

}  // namespace quorvel::formats
