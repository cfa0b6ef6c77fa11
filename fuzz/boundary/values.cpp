#include "boundary/values.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <new>
#include <string>
#include <string_view>

#include "automation/element_size.h"
#include "boundary/member_call.h"
#include "boundary/page_object.h"
#include "boundary/sandbox.h"
#include "core/dictionary.h"

namespace quendal::fuzz {
namespace {

using namespace std::string_view_literals;

constexpr std::int32_t kInts[] = {
    0,  1,  2,   3,   -1,  -2,    4,      7,     10,     35,         100,         999,
    40, 15, 255, 256, 127, 32767, -32768, 65536, 100000, 2147483647, -2147483648, 1000000};

constexpr double kDoubles[] = {0.0,
                               1.0,
                               -1.0,
                               0.5,
                               -0.0,
                               2.5,
                               1e15,
                               1e16,
                               1e300,
                               -1e300,
                               1e-300,
                               2147483647.5,
                               45000.75,
                               2958465.999999,
                               2958466.0,
                               -657434.0,
                               -657435.0,
                               1e9,
                               123456789.123,
                               std::numeric_limits<double>::infinity(),
                               -std::numeric_limits<double>::infinity(),
                               std::numeric_limits<double>::quiet_NaN(),
                               std::numeric_limits<double>::denorm_min()};

constexpr std::u16string_view kTexts[] = {u"",
                                          u"2",
                                          u"-1",
                                          u"32767",
                                          u"1e400",
                                          u"True",
                                          u" 12 ",
                                          u"&HFF",
                                          u"0.1",
                                          u"99999999999",
                                          u"2024-02-30",
                                          u"31.12.1999 23:59:59",
                                          u"12:61",
                                          u"1/2/3",
                                          u"#YYYY-#MM-#DD #HH12:#NN #AMPM",
                                          u"#NTH #UNTH #LNTH #WWW #MMMM ##",
                                          u"{\"a\":[1,{\"b\":null}],\"c\":-1.5e3,\"a\":2}",
                                          u"[[[[[]]]]]",
                                          u"[1,2,{\"k\":\"\\u0041\\ud800\"}]",
                                          u"LOG.TXT",
                                          u"sub\\LOGS\\",
                                          u"\\\\server",
                                          u"\\\\",
                                          u"\\",
                                          u"\\\\server\\share\\x",
                                          u"..\\x",
                                          u"C:\\x\\y",
                                          u".",
                                          u"module.dll",
                                          u"a%u0041%zz%41+b",
                                          u"<b>&\"'\r\n\t",
                                          u"   ",
                                          u"'; DROP--",
                                          u"REMOTE_ADDR",
                                          u"HTTP_USER_AGENT",
                                          u"Recordset",
                                          u"line\r\nline\r\n",
                                          u"a\0b"sv,
                                          u"\0"sv,
                                          u"\xD800",
                                          u"x\xDC00y",
                                          u"\xD83D\xDE00",
                                          u"\u00E4\u4E00",
                                          u"hello wORLD o'neil"};

std::u16string longText(Page& page) {
  constexpr std::size_t kLong = 100'000;
  std::u16string text(anyText(page).view());
  if (text.empty() || text.size() > kLong) text = u"x";
  std::u16string result;
  result.reserve(kLong);
  while (result.size() < kLong) result.append(text, 0, kLong - result.size());
  return result;
}

DECIMAL anyDecimal(Page& page) {
  DECIMAL value{};
  value.Hi32 = page.in.byte() % 2 == 0 ? 0 : page.in.number<ULONG>();
  value.Lo64 = page.in.byte() % 2 == 0 ? page.in.byte() : page.in.number<std::uint64_t>();
  value.scale = page.in.byte();
  if (page.in.byte() % 2 == 0) value.scale = static_cast<BYTE>(value.scale % 29);
  value.sign = page.in.byte();
  return value;
}

/// The bytes of an element of a type that holds no reference.
void putNumber(Page& page, VARTYPE type, void* place, std::size_t size) {
  if (type == VT_R8 || type == VT_DATE) {
    const double value = anyDouble(page);
    std::memcpy(place, &value, size);
  } else if (type == VT_DECIMAL) {
    const DECIMAL value = anyDecimal(page);
    std::memcpy(place, &value, size);
  } else {
    const std::int64_t value =
        page.in.byte() % 2 == 0 ? anyInt(page) : page.in.number<std::int64_t>();
    std::memcpy(place, &value, size);
  }
}

void fill(Page& page, SAFEARRAY& array, VARTYPE type, int depth) {
  auto* place = static_cast<std::byte*>(array.pvData);
  for (std::size_t left = elementCount(array); left > 0; --left, place += array.cbElements) {
    switch (type) {
      case VT_VARIANT:
        *reinterpret_cast<VARIANT*>(place) = freshValue(page, depth + 1).release();
        break;
      case VT_BSTR:
        *reinterpret_cast<BSTR*>(place) = anyText(page).release();
        break;
      case VT_DISPATCH:
      case VT_UNKNOWN:
        *reinterpret_cast<IDispatch**>(place) = anyObject(page).release();
        break;
      default:
        putNumber(page, type, place, array.cbElements);
    }
  }
}

Variant arrayOf(Page& page, VARTYPE type, int depth) {
  constexpr LONG kLowerBounds[] = {0, 0, 0, 1, -1, 5, -2147483648, 2147483640, 2147483647, -3};
  if (page.in.oneIn(8)) return Variant::array(nullptr, type);
  const UINT dimensions = page.in.oneIn(5) ? 2 + page.in.byte() % 3U : 1;
  SAFEARRAYBOUND bounds[4];
  for (UINT i = 0; i < dimensions; ++i) {
    const ULONG most = dimensions == 1 ? (page.in.oneIn(16) ? 200 : 6) : 3;
    bounds[i] = {page.in.byte() % (most + 1), page.in.oneOf(kLowerBounds)};
  }
  SAFEARRAY* const array = SafeArrayCreate(type, dimensions, bounds);
  if (array == nullptr) return Variant::array(nullptr, type);
  Variant result = Variant::array(array, type);
  fill(page, *array, type, depth);
  if (page.in.oneIn(8)) array->fFeatures |= FADF_STATIC | FADF_FIXEDSIZE;
  return result;
}

/// Arrays in arrays, deeper than anybody's stack should follow.
Variant deepArray(Page& page) {
  Variant inner = plainArray(page, 3);
  for (std::size_t depth = 100 + 40 * page.in.byte(); depth > 0; --depth) {
    SAFEARRAY* const array = SafeArrayCreateVector(VT_VARIANT, 0, 1);
    *static_cast<VARIANT*>(array->pvData) = inner.release();
    inner = Variant::array(array);
  }
  return inner;
}

Variant tagged(VARTYPE type, std::int64_t bits) {
  Variant value;
  value.vt = type;
  value.llVal = bits;
  return value;
}

Variant anyReference(Page& page) {
  VARIANT& target =
      page.in.byte() % 2 == 0 ? page.variable(page.in.byte()) : page.link(page.in.byte());
  if (page.in.byte() % 2 == 0) {
    Variant reference = tagged(kVariantReference, 0);
    reference.pvarVal = &target;
    return reference;
  }
  VARIANT& typed = page.typed(page.in.byte());
  Variant reference = tagged(static_cast<VARTYPE>(VT_BYREF | typed.vt), 0);
  if (page.in.oneIn(16)) return reference;  // leads nowhere
  reference.byref = typed.vt == VT_DECIMAL ? static_cast<void*>(&typed.decVal) : &typed.llVal;
  return reference;
}

Variant objectValue(Page& page) {
  Variant value(anyObject(page));
  if (page.in.oneIn(6)) value.vt = VT_UNKNOWN;
  return value;
}

}  // namespace

std::size_t elementCount(const SAFEARRAY& array) noexcept {
  std::size_t count = array.cDims == 0 ? 0 : 1;
  for (UINT i = 0; i < array.cDims; ++i) count *= array.rgsabound[i].cElements;
  return count;
}

std::int32_t anyInt(Page& page) {
  return page.in.oneIn(4) ? page.in.number<std::int32_t>() : page.in.oneOf(kInts);
}

double anyDouble(Page& page) {
  return page.in.oneIn(4) ? page.in.number<double>() : page.in.oneOf(kDoubles);
}

Text anyText(Page& page) {
  const std::size_t kind = page.in.byte();
  if (kind == 255) return Text(longText(page));
  if (kind >= 240) return {};
  if (kind >= 200) {
    std::u16string text(page.in.byte() % 24, u'\0');
    for (char16_t& unit : text) unit = page.in.number<std::uint16_t>();
    return Text(text);
  }
  if (kind >= 180) return Text(Sandbox::folder() + u"dir" + std::u16string(kTexts[kind - 180]));
  return Text(kTexts[kind % std::size(kTexts)]);
}

Variant valueOf(Page& page, VARTYPE type) {
  if ((type & VT_ARRAY) != 0) return arrayOf(page, type & VT_TYPEMASK, 1);
  Variant value = tagged(type, 0);
  switch (type) {
    case VT_EMPTY:
    case VT_NULL:
      return value;
    case VT_BSTR:
      return anyText(page);
    case VT_DISPATCH:
    case VT_UNKNOWN:
      value.pdispVal = anyObject(page).release();
      return value;
    case VT_DECIMAL:
      value.decVal = anyDecimal(page);
      value.vt = VT_DECIMAL;
      return value;
    case VT_BOOL:
      value.boolVal = page.in.oneIn(4) ? page.in.number<VARIANT_BOOL>()
                                       : static_cast<VARIANT_BOOL>(-(page.in.byte() % 2));
      return value;
    default:
      putNumber(page, type, &value.llVal, automation::elementSize(type));
      return value;
  }
}

Variant plainArray(Page& page, int depth) {
  SAFEARRAY* const array = SafeArrayCreateVector(VT_VARIANT, 0, 1 + page.in.byte() % 4U);
  if (array == nullptr) throw std::bad_alloc();
  Variant result = Variant::array(array);
  fill(page, *array, VT_VARIANT, depth);
  return result;
}

Variant dictionary(Page& page, int depth) {
  const auto made = Dictionary::create(page.in.byte() % 2 == 0 ? Dictionary::Compare::Binary
                                                               : Dictionary::Compare::Text);
  for (std::size_t left = page.in.below(5); left > 0; --left) {
    try {
      const Variant key = page.in.byte() % 2 == 0 ? Variant(std::int32_t{page.in.byte()})
                                                  : freshValue(page, depth + 1);
      made.set(key, freshValue(page, depth + 1));
    } catch (const AutomationError&) {  // a key of no use
    }
  }
  if (page.in.oneIn(16)) {
    page.willEmpty(made.object());
    made.set(Variant(u"itself"), Variant(made.object()));
  }
  return made.object();
}

Variant freshValue(Page& page, int depth) {
  constexpr int kDeepest = 3;
  constexpr VARTYPE kPlain[] = {VT_EMPTY, VT_NULL, VT_I2,    VT_I4,      VT_R4,  VT_R8,  VT_CY,
                                VT_DATE,  VT_BOOL, VT_ERROR, VT_DECIMAL, VT_I1,  VT_UI1, VT_UI2,
                                VT_UI4,   VT_I8,   VT_UI8,   VT_INT,     VT_UINT};
  constexpr VARTYPE kElements[] = {VT_VARIANT,  VT_I2,      VT_I4,      VT_R8,   VT_BSTR, VT_DATE,
                                   VT_DISPATCH, VT_UNKNOWN, VT_DECIMAL, VT_BOOL, VT_UI1,  VT_R4,
                                   VT_CY,       VT_I8,      VT_ERROR,   VT_INT};
  constexpr VARTYPE kUnknown[] = {15, 24, 36, 64, 99, VT_ARRAY, VT_BYREF};
  const std::size_t kind = page.in.below(32);
  if (depth >= kDeepest || kind < 8) return valueOf(page, page.in.oneOf(kPlain));
  if (kind < 14) return anyText(page);
  if (kind < 20) return objectValue(page);
  if (kind < 23) return dictionary(page, depth);
  if (kind < 26) return plainArray(page, depth);
  if (kind < 29) return arrayOf(page, page.in.oneOf(kElements), depth);
  if (kind == 29) return Variant::missing();
  if (kind == 30) return page.in.oneIn(16) ? deepArray(page) : anyReference(page);
  return page.in.oneIn(8) ? tagged(page.in.oneOf(kUnknown), 0) : valueOf(page, VT_DISPATCH);
}

Variant anyValue(Page& page, int depth) {
  if (!page.in.oneIn(4)) return freshValue(page, depth);
  Variant copy;
  VariantCopyInd(&copy, &page.variable(page.in.byte()));
  return copy;
}

}  // namespace quendal::fuzz
