// A row of a sheet that has a name, such as User.RoleNames, as one constant: the names of its cells follow from it.
#pragma once

#include <string>
#include <string_view>

namespace quorvel::schema {

/// Written as the name of the row's value cell. A name that does not begin with a section is refused by the compiler.
class NamedRow {
 public:
  consteval NamedRow(const char* valueCell) : cell_(valueCell) {
    if (!cell_.starts_with("User.") && !cell_.starts_with("Prop.")) throw "a row's name begins with User. or Prop.";
  }

  /// The value cell, "User.RoleNames".
  constexpr std::string_view cell() const { return cell_; }
  constexpr operator std::string_view() const { return cell_; }
  friend constexpr bool operator==(const NamedRow& a, const NamedRow& b) = default;
  /// The name without its section, "RoleNames".
  constexpr std::string_view name() const { return cell_.substr(5); }
  /// A row of shape data, "Prop."; else one of user-defined cells.
  constexpr bool isShapeData() const { return cell_.front() == 'P'; }
  /// Another cell of the row: `column("Format")` is "Prop.Task_ID.Format".
  std::string column(std::string_view name) const {
    std::string cell(cell_);
    cell += '.';
    cell += name;
    return cell;
  }

 private:
  std::string_view cell_;
};

}  // namespace quorvel::schema
