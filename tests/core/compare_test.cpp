// The order of values.
#include "core/compare.h"
#include "tests/automation/values.h"

namespace quendal::test {
namespace {

Variant gives(ScriptObject::Call call) {
  return Variant(ScriptObject().defaultMember(std::move(call)).object());
}

TEST(CompareValues, FollowsTheHostsRules) {
  const auto n = [](std::int32_t value) { return Variant(value); };
  const auto t = [](const char16_t* text) { return Variant(text); };
  const Variant empty, null = Variant::null(), yes(Boolean::True);
  const Variant two = gives([](auto) { return Variant(2.0); });
  const Variant unknown = gives([](auto) { return Variant::null(); });
  const Variant nan(std::numeric_limits<double>::quiet_NaN());
  constexpr std::int64_t kBig = 1LL << 53, kMost = INT64_MAX;
  constexpr auto less = std::partial_ordering::less;
  constexpr auto equal = std::partial_ordering::equivalent;
  constexpr auto never = std::partial_ordering::unordered;
  const struct {
    Variant a, b;
    std::partial_ordering order;
  } rows[] = {{yes, Variant(-0.5), less},
              {n(2), Variant::date(2.0), equal},
              {cy(20000), n(2), equal},
              {cy(kBig * 999), cy(kBig * 999 + 1), less},
              {i8(kBig + 1), i8(kBig + 2), less},
              {i8(kMost - 1), ui8(kMost), less},
              {make(VT_I1, &VARIANT::cVal, -1), make(VT_UI4, &VARIANT::ulVal, 0xFFFFFFFF), less},
              {t(u"ABC"), t(u"abc"), less},
              {Variant(1e300), t(u""), less},
              {empty, n(0), equal},
              {empty, t(u""), equal},
              {two, n(2), equal},
              {two, t(u""), less},
              {unknown, n(2), never},
              {null, Variant(Object()), never},
              {nan, n(2), never}};
  int index = 0;
  for (const auto& row : rows) {
    const auto opposite = row.order == less ? std::partial_ordering::greater : row.order;
    PageVariable variable(row.a, false, true);
    EXPECT_EQ(compareValues(variable.argument(), row.b), row.order) << index;
    EXPECT_EQ(compareValues(row.b, row.a), opposite) << index++;
  }
}

TEST(CompareValues, FailsWhereTheHostDoes) {
  const Object self = ScriptObject().object();
  const std::pair<Variant, int> rows[] = {
      {of(u"a"), 13},
      {Variant::missing(), 13},
      {Variant(Object()), 91},
      {gives([&](auto) { return Variant(self); }), 438},
      {gives([](auto) -> Variant { throw AutomationError(1234); }), 1234}};
  for (const auto& [value, number] : rows)
    EXPECT_EQ(raisedBy([&] { static_cast<void>(compareValues(value, Variant(1.0))); }), number);
}

}  // namespace
}  // namespace quendal::test
