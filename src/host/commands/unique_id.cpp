#include "host/commands/unique_id.h"

#include <array>
#include <cstdint>
#include <random>

namespace quorvel::host {
namespace {

/// 122 random bits in the form of RFC 9562, version 4, in capitals as drawings have it.
std::string newUniqueId() {
  static std::random_device source;
  std::array<std::uint32_t, 4> bits{source(), source(), source(), source()};
  bits[1] = (bits[1] & 0xFFFF0FFFu) | 0x4000u;
  bits[2] = (bits[2] & 0x3FFFFFFFu) | 0x80000000u;
  constexpr char digits[] = "0123456789ABCDEF";
  std::string text = "{";
  for (int i = 0; i < 32; ++i) {
    if (i == 8 || i == 12 || i == 16 || i == 20) text += '-';
    text += digits[(bits[static_cast<std::size_t>(i / 8)] >> (28 - i % 8 * 4)) & 0xF];
  }
  return text + "}";
}

}  // namespace

UniqueIdOutcome uniqueIdOf(Engine& engine, SheetId id, UniqueIdRequest request) {
  const Sheet* shape = engine.store().sheet(id);
  if (!shape || !shape->isShape()) return {Outcome::refused("only shapes have a unique ID"), {}};
  const bool changes = request == UniqueIdRequest::Delete      ? !shape->uniqueId.empty()
                       : request == UniqueIdRequest::GetOrMake ? shape->uniqueId.empty()
                                                               : false;
  if (!changes) return {Outcome::done(), shape->uniqueId};
  const std::string uniqueId = request == UniqueIdRequest::GetOrMake ? newUniqueId() : std::string();
  CommandScope scope(engine, shape->document, "Unique ID");
  engine.edit().setFields(id, [&](SheetFields& fields) { fields.uniqueId = uniqueId; });
  scope.commit();
  return {Outcome::done(), uniqueId};
}

}  // namespace quorvel::host
