// The bytes of pictures between base64 in a file and as the engine holds them.
#pragma once

#include <string>
#include <string_view>

#include "base/maybe.h"

namespace quorvel::formats::vdx {

std::string toBase64(std::string_view bytes);
/// White space is passed over. Nothing for text that is not base64.
Maybe<std::string> fromBase64(std::string_view text);

/// What a picture of that kind is called when it is a file: "png", "emf", "bmp" …
std::string extensionOf(std::string_view foreignType, std::string_view compression);

}  // namespace quorvel::formats::vdx
