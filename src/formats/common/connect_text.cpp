#include "formats/common/connect_text.h"

#include "formats/package/xml_writing.h"

namespace quorvel::formats {

std::string connectText(const host::Connect& connect) {
  XmlWriter writer;
  writer.start("Connect").attribute("FromSheet", connect.fromShape).attribute("FromCell", connect.fromCell);
  writer.attribute("FromPart", connect.fromPart).attribute("ToSheet", connect.toShape);
  writer.attribute("ToCell", connect.toCell).attribute("ToPart", connect.toPart);
  return writer.end().take();
}

}  // namespace quorvel::formats
