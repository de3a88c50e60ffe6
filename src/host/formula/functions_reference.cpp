// Functions about cells: guards, references that are not watched, redirected writes.
#include "host/formula/functions.h"

namespace quorvel::host {
namespace {

Value first(Call& call) { return call.value(0); }

/// The value of the cell that writes go to. The expression that is written is not evaluated here.
Value redirected(Call& call) { return call.truth(2) ? Value() : call.value(0); }

constexpr FunctionRow rows[] = {
    {"GUARD", first, Guards},
    {"THEMEGUARD", first},
    {"GETREF", first, FirstUnwatched},
    {"GETVAL", first, FirstUnwatched},
    // Its arguments are dependencies and nothing else, so they are not even read.
    {"DEPENDSON", [](Call&) { return Value::boolean(false); }},
    {"SETATREF", redirected, SecondUnwatched},
    {"SETATREFEXPR", first},
    {"SETATREFEVAL", first},
    {"SETF", [](Call&) { return Value(); }, FirstUnwatched},
    {"REF", [](Call&) { return Value::error(ErrorCode::Reference); }},
};

}  // namespace

std::span<const FunctionRow> referenceFunctions() { return rows; }

}  // namespace quorvel::host
