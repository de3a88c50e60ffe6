#include "dialogs/filter_number_key.h"

#include "base/text.h"

namespace quorvel::addin {
namespace {

bool belongsInNumber(const std::string& text, int key, bool noMinus, bool noPoint) {
  switch (key) {
    case 0:
    case keys::backspace:
    case keys::controlZ:
      return true;
    case '-':
      return !noMinus && text.find('-') == std::string::npos;
    case '.':
      return !noPoint && text.find('.') == std::string::npos;
    default:
      return key >= '0' && key <= '9';
  }
}

}  // namespace

int filterNumberKey(Platform& platform, const Control& box, int key, int maxLength, bool noMinus, bool noPoint) {
  const auto reject = [&] {
    platform.beep();
    return 0;
  };
  if (!belongsInNumber(box.text(), key, noMinus, noPoint)) key = reject();
  const bool isFull = lengthOf(box.text()) >= static_cast<std::size_t>(maxLength);
  if (isFull && key != keys::controlZ && key != 0) key = reject();
  return key;
}

}  // namespace quorvel::addin
