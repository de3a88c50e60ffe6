// The themes in a drawing's file.
#pragma once

#include <map>
#include <memory>
#include <vector>

#include "host/sheet/store.h"
#include "render/cells/theme.h"

namespace quorvel {

std::vector<render::Theme> themesOf(const host::Document& document);

/// Gives formulas the values of themes. A document's themes are read at the first request.
class DocumentThemes : public host::ThemeValues {
 public:
  Maybe<host::Value> valueOf(const host::Store& store, host::SheetId sheet, std::string_view property) const override;
  Maybe<std::uint32_t> throughGradientStop(const host::Store& store, host::SheetId sheet, std::uint32_t rgb,
                                           int stop) const override;

 private:
  const std::vector<render::Theme>& of(const host::Store& store, host::SheetId sheet) const;

  struct Read {
    std::weak_ptr<const host::Extras> source;  ///< another one after the document was read again
    std::vector<render::Theme> themes;
  };
  mutable std::map<host::DocumentId, Read> read_;
};

}  // namespace quorvel
