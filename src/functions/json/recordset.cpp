#include "functions/json/recordset.h"

namespace quendal::json {
namespace {

enum State : std::int32_t { kClosed = 0, kOpen = 1, kExecuting = 4 };

bool isSet(const Object& recordset, std::u16string_view flag) {
  return int32Of(recordset.get(flag)) != 0;
}

// Providers count in integers of any type, of which pages know a few; a byte is no number in JSON.
void writeCount(const Variant& count, Writer& out,
                const std::function<void(const VARIANT&)>& encode) {
  const bool isInteger = count.vt >= VT_I1 && count.vt <= VT_UINT && count.vt != VT_UI1;
  if (!isInteger) return encode(count);
  out.putNumber(textOf(count));
}

void writeRow(const Object& recordset, Writer& out,
              const std::function<void(const VARIANT&)>& encode) {
  bool isFirst = true;
  out.put(u'{');
  forEach(recordset.get(u"Fields"), [&](const Variant& element) {
    if (!isFirst) out.put(u',');
    isFirst = false;
    const Object field = Object::from(element);
    out.putQuoted(textOf(field.get(u"name")));
    out.put(u':');
    encode(field.get(u"Value"));
  });
  out.put(u'}');
}

void writeRows(const Object& recordset, Writer& out,
               const std::function<void(const VARIANT&)>& encode) {
  recordset.call(u"MoveFirst");
  // Both flags are asked for, whatever the first one says.
  const bool isBefore = isSet(recordset, u"BOF");
  const bool isBehind = isSet(recordset, u"EOF");
  if (isBefore && isBehind) return;
  bool isFirst = true;
  while (!isSet(recordset, u"EOF")) {
    if (!isFirst) out.put(u',');
    isFirst = false;
    writeRow(recordset, out, encode);
    recordset.call(u"MoveNext");
  }
}

}  // namespace

void writeRecordset(const Object& recordset, Writer& out,
                    const std::function<void(const VARIANT&)>& encode) {
  out.put(u'{');
  switch (int32Of(recordset.get(u"State"))) {
    case kClosed:
      out.put(u"\"state\": \"closed\"");
      break;
    case kExecuting:
      out.put(u"\"state\": \"executing\"");
      break;
    case kOpen:
      out.put(u"\"state\": \"open\",\"recordCount\": ");
      writeCount(recordset.get(u"RecordCount"), out, encode);
      out.put(u",\"rows\": [");
      writeRows(recordset, out, encode);
      out.put(u']');
      recordset.call(u"MoveFirst");
      break;
    default:  // any other state deliberately leaves the braces empty
      break;
  }
  out.put(u'}');
}

}  // namespace quendal::json
