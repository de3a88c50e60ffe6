// Calls whose single refusal would lose what cannot be found again.
#pragma once

namespace quorvel {

/// The answer of `call`; a host that refuses it is asked once more. Only for calls that change nothing when refused.
template <class Call>
auto askAgain(Call call) {
  auto answer = call();
  return answer ? answer : call();
}

}  // namespace quorvel
