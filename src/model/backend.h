// The backend of the handles of host_model.h: one interface of three calls, so that the host in memory, a wrapper
// that refuses on purpose and another program's host can each serve the whole surface.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "base/maybe.h"

namespace quorvel {

class ApplicationEvents;

enum class ObjectKind : std::uint8_t {
  None,
  Application,
  Documents,
  Document,
  Pages,
  Page,
  Masters,
  Master,
  Shapes,
  Shape,
  Section,
  Row,
  Cell,
  Characters,
  Selection,
  Windows,
  Window,
  Layers,
  Layer,
  Hyperlinks,
  Hyperlink,
  Connects,
  Connect,
  CommandBars,
  CommandBar,
  CommandBarControls,
  CommandBarControl,
};

/// Names one host object. Only the backend knows what the two numbers mean; equal references are equal objects.
struct ObjectRef {
  ObjectKind kind = ObjectKind::None;
  std::uint32_t id = 0;
  std::uint64_t part = 0;

  explicit operator bool() const { return kind != ObjectKind::None; }
  friend bool operator==(const ObjectRef&, const ObjectRef&) = default;
};

/// One published member of one kind of object; see members.def.
enum class Member : std::uint16_t {
#define HOST_MEMBER(object, member, access) object##_##member,
#include "model/members.def"
#undef HOST_MEMBER
};

enum class MemberAccess : std::uint8_t { G = 1, P = 2, GP = 3, C = 4 };

struct MemberInfo {
  Member member;
  ObjectKind object;
  MemberAccess access;
  std::string_view objectName;
  std::string_view memberName;
};

/// All members in the order of members.def, so that a Member's number is its place.
std::span<const MemberInfo> allMembers();
inline const MemberInfo& infoOf(Member member) { return allMembers()[static_cast<std::size_t>(member)]; }

/// A value handed to the host. Texts are borrowed for the length of the call.
using Argument = std::variant<std::monostate, bool, std::int64_t, double, std::string_view, ObjectRef>;
/// A value that the host gives back.
using Variant = std::variant<std::monostate, bool, std::int64_t, double, std::string, ObjectRef>;
using Arguments = std::span<const Argument>;

/// Why a call was refused, recorded once at its cause.
struct Refusal {
  Member member;
  std::string object;  ///< the object as a user would name it, such as "Page-1, shape A01"
  std::string reason;
  /// The object has no cell, row, section, column or member of the name or number that was asked for.
  bool isUnknownName = false;
};

/// A host. Every call may be refused; a refused call leaves the host as it was and is recorded. Nothing throws.
class Backend {
 public:
  virtual ~Backend() = default;

  /// Reads a property, or navigates to another object; an object that is legitimately absent (the master of a drawn
  /// shape) is a value that holds a null reference.
  virtual Maybe<Variant> get(const ObjectRef& object, Member member, Arguments arguments) = 0;
  virtual bool put(const ObjectRef& object, Member member, Arguments indices, const Argument& value) = 0;
  /// An action; gives the new object or std::monostate.
  virtual Maybe<Variant> call(const ObjectRef& object, Member member, Arguments arguments) = 0;

  /// The application object of this host.
  virtual ObjectRef application() const = 0;
  /// Starts and ends the stream of events. A listener must be removed before it is deleted; removing it inside an event
  /// is allowed, and it receives no more events.
  virtual void advise(ApplicationEvents& listener) = 0;
  virtual void unadvise(ApplicationEvents& listener) = 0;

  /// The last refusals, oldest first (at most 1,000 are kept), and how many there were in all.
  virtual std::vector<Refusal> refusals() const = 0;
  virtual std::size_t refusalCount() const = 0;
};

}  // namespace quorvel
