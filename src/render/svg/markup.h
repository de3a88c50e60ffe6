// Pieces of SVG text: numbers, escaped characters, data addresses.
#pragma once

#include <string>
#include <string_view>

namespace quorvel::render::svg {

/// At most `digits` decimals, without trailing zeros; the point is ".".
void appendNumber(std::string& out, double number, int digits = 3);
/// Escaped for element content and for attributes in double quotes. What XML cannot hold is left out.
void appendEscaped(std::string& out, std::string_view text);
void appendColour(std::string& out, unsigned rgb);
void appendBase64(std::string& out, std::string_view bytes);

}  // namespace quorvel::render::svg
