#include "formats/common/omitted_members.h"

#include <algorithm>
#include <vector>

#include "formats/common/carried.h"

namespace quorvel::formats {
namespace {

bool wasOmittedInFile(const host::Sheet& sheet) {
  const CarriedSheet* const carry = carried<CarriedSheet>(sheet.extras);
  return carry && carry->omittedInFile;
}

bool hasNothingOfItsOwn(const host::Sheet& sheet) {
  return sheet.sections.empty() && !sheet.text && !sheet.foreign && sheet.name.empty() && sheet.universalName.empty() &&
         sheet.data1.empty() && sheet.data2.empty() && sheet.data3.empty() && sheet.uniqueId.empty() &&
         !sheet.lineStyle && !sheet.fillStyle && !sheet.textStyle && !sheet.master && sheet.prototype;
}

}  // namespace

std::unordered_set<host::SheetId> membersToOmit(const host::Store& store, const host::Page& page) {
  std::vector<int> numbers;
  std::unordered_set<host::SheetId> members;
  int largestWritten = 0;
  for (const host::SheetId top : page.shapes) {
    std::vector<int> ofThisShape;
    for (const host::SheetId id : store.subtree(top)) {
      const host::Sheet& sheet = *store.sheet(id);
      if (!wasOmittedInFile(sheet)) {
        largestWritten = std::max(largestWritten, sheet.shapeId);
        // A member of such a member needs it in the file.
        if (members.contains(sheet.parent)) return {};
        continue;
      }
      const host::Sheet* const original = store.sheet(sheet.prototype);
      const host::Sheet* const group = store.sheet(sheet.parent);
      if (!hasNothingOfItsOwn(sheet) || !original || !group || original->parent != group->prototype) return {};
      ofThisShape.push_back(sheet.shapeId);
      members.insert(id);
    }
    std::ranges::sort(ofThisShape);
    numbers.insert(numbers.end(), ofThisShape.begin(), ofThisShape.end());
  }
  // Opening gives out the numbers behind the largest one, shape by shape.
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    if (numbers[i] != largestWritten + 1 + static_cast<int>(i)) return {};
  }
  return members;
}

}  // namespace quorvel::formats
