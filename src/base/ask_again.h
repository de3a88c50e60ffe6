// Repeats a refused call once, where a refusal would lose data.
#pragma once

namespace quorvel {

/// The result of `call`; a refused call is repeated once. Only for calls that change nothing when refused.
template <class Call>
auto askAgain(Call call) {
  auto answer = call();
  return answer ? answer : call();
}

}  // namespace quorvel
