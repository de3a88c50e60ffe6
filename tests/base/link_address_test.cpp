// Addresses of hyperlinks as URIs: what pictures link to, and what is left out.
#include "base/link_address.h"

#include <gtest/gtest.h>

namespace quorvel {
namespace {

TEST(LinkAddress, AsUri) {
  const struct {
    const char *address, *place, *uri;
  } cases[] = {
      // Web and mail: what is a URI already stays one.
      {"https://example.org/a b?c=d:e&f=\"g\"#h i", "", "https://example.org/a%20b?c=d:e&f=%22g%22#h%20i"},
      {" HTTP://example.org/100%/50%25 ", "", "HTTP://example.org/100%25/50%25"},
      {"http://example.org/x#old", "new place", "http://example.org/x#new%20place"},
      {"www.example.org/d'accord", "", "http://www.example.org/d%27accord"},
      {"ftp://example.org/x<y>", "", "ftp://example.org/x%3Cy%3E"},
      {"https://example.org/\xE5\x9C\xB0\xE5\x9B\xB3", "", "https://example.org/%E5%9C%B0%E5%9B%B3"},
      {"mailto:a.b@example.org?subject=Task #1", "", "mailto:a.b@example.org?subject=Task%20%231"},
      {"mailto:R&D@example.org?attach=/etc/passwd&Subject=x?attach=y&%61ttach=z&cc=c%0Aattach:d&body=1%0A2", "",
       "mailto:R%26D@example.org?Subject=x%3Fattach=y&body=1%0A2"},
      // Paths are escaped throughout.
      {"C:\\Maps\\x y.vsd", "", "file:///C:/Maps/x%20y.vsd"},
      {"C:\\Maps\\x.vsd", "Page-2/A 01", "file:///C:/Maps/x.vsd#Page-2/A%2001"},
      {"\\\\server\\maps\\x.vsd", "", "file://server/maps/x.vsd"},
      {"/maps/\xCE\xB1.vsdx", "", "file:///maps/%CE%B1.vsdx"},
      {"..\\x.vsd", "", "../x.vsd"},
      {"sub/100% \"x\"+?.doc", "", "sub/100%25%20%22x%22+%3F.doc"},
      {"sub/a:b.doc", "", "sub/a:b.doc"},
      {"a%20b.doc#c%20d", "", "a%20b.doc#c%20d"},
      {"file:///C:/Maps/x%20y.vsd", "", "file:///C:/Maps/x%20y.vsd"},
      {"file://C:\\Maps\\x y.vsd", "", "file:///C:/Maps/x%20y.vsd"},
      {"file://server/maps/x.vsd", "", "file://server/maps/x.vsd"},
      {"file://localhost/maps/x.vsd", "", "file:///maps/x.vsd"},
      {"file:/maps/x.vsd", "", "file:///maps/x.vsd"},
      // A "#" begins a bookmark, or is part of a name.
      {"order.doc#Second part", "", "order.doc#Second%20part"},
      {"page.html#section.2", "", "page.html#section.2"},
      {"page.html#a#b", "", "page.html#a%23b"},
      {"order#2.doc#mark", "", "order%232.doc#mark"},
      {"C#\\order.doc", "", "C%23/order.doc"},
      {"order#2.doc", "", "order%232.doc"},
      {"v1.0#2.doc", "", "v1.0%232.doc"},
      // No link.
      {"", "Page-2", ""},
      {"javascript:alert(1)", "", ""},
      {" JavaScript:x", "", ""},
      {"java\tscript:x", "", ""},
      {"data:text/html,x", "", ""},
      {"vnd.some-handler:x", "", ""},
      {"http:x", "", ""},
      {"https:///x", "", ""},
      {"http://user@:80/x", "", ""},
      {"mailto:a@b%0Ac", "", ""},
      {"file:///maps/x%00.vsd", "", ""},
  };
  for (const auto& c : cases) EXPECT_EQ(uriOfLink(c.address, c.place), c.uri) << c.address;
}

TEST(LinkAddress, RelativeToABase) {
  const struct {
    const char *base, *address, *uri;
  } cases[] = {
      {"https://example.org/widgets/", "..\\a b.htm#part", "https://example.org/a%20b.htm#part"},
      {"https://example.org", "../../x.htm", "https://example.org/x.htm"},
      {"C:\\Maps", "x y.vsd", "file:///C:/Maps/x%20y.vsd"},
      {"shared", "x.vsd", "shared/x.vsd"},
      {"https://example.org/", "C:\\Maps\\x.vsd", "file:///C:/Maps/x.vsd"},
      {"https://example.org/", "mailto:a@example.org", "mailto:a@example.org"},
      {"javascript:x", "x.vsd", "x.vsd"},
  };
  for (const auto& c : cases) EXPECT_EQ(uriOfLink(c.address, {}, c.base), c.uri) << c.address;
}

}  // namespace
}  // namespace quorvel
