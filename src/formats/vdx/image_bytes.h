// The bytes of images between base64 in a file and as the engine holds them.
#pragma once

#include <string>
#include <string_view>

#include "base/maybe.h"

namespace quorvel::formats::vdx {

std::string toBase64(std::string_view bytes);
/// White space is ignored. Nothing for text that is not base64.
Maybe<std::string> fromBase64(std::string_view text);

/// The file extension of an image of that kind: "png", "emf", "bmp" …
std::string extensionOf(std::string_view foreignType, std::string_view compression);

}  // namespace quorvel::formats::vdx
