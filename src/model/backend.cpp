#include "model/backend.h"

namespace quorvel {

std::span<const MemberInfo> allMembers() {
  static constexpr MemberInfo members[] = {
#define HOST_MEMBER(object, member, access) \
  {Member::object##_##member, ObjectKind::object, MemberAccess::access, #object, #member},
#include "model/members.def"
#undef HOST_MEMBER
  };
  return members;
}

}  // namespace quorvel
