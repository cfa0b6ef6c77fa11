// A million short pieces through the builder's function table, as a compiled host calls it, against
// appending them to a std::u16string. Times are in milliseconds.
#include <array>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "bench/row.h"
#include "core/dispatch.h"
#include "functions/concat.h"

namespace quendal::bench {

/// The builder's function table, in the order of its members. Not in the unnamed namespace, where
/// the compiler sees that nobody implements it.
struct ConcatTable : IDispatch {
  virtual HRESULT STDMETHODCALLTYPE get_Value(BSTR*) = 0;
  virtual HRESULT STDMETHODCALLTYPE put_Value(BSTR*) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_Buffer(BSTR*) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_Text(QuoteStyle, BSTR*) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_Length(std::int32_t*) = 0;
  virtual HRESULT STDMETHODCALLTYPE get_BufferLength(std::int32_t*) = 0;
  virtual HRESULT STDMETHODCALLTYPE Clear(std::int32_t) = 0;
  virtual HRESULT STDMETHODCALLTYPE TrimToSize() = 0;
  virtual HRESULT STDMETHODCALLTYPE Append(SAFEARRAY**) = 0;
  virtual HRESULT STDMETHODCALLTYPE AppendEx(BSTR*, QuoteStyle) = 0;
};

namespace {

constexpr int kPieces = 1'000'000;
constexpr std::array<std::u16string_view, 4> kTexts = {u"<td>", u"12345", u"</td>", u"\r\n"};

/// Milliseconds of `append(i)` for all pieces, into something new.
template <class Start, class Append>
void compareAppending(std::string_view name, int pieces, Start&& start, Append&& append) {
  const auto ours = [&] {
    start();
    for (int i = 0; i < pieces; ++i) append(static_cast<std::size_t>(i) % kTexts.size());
  };
  std::size_t total = 0;
  const auto peer = [&] {
    std::u16string text;
    for (int i = 0; i < pieces; ++i)
      text.append(kTexts[static_cast<std::size_t>(i) % kTexts.size()]);
    total += text.size();
  };
  const Times times = timesOf(1, ours, peer);
  if (total == 0) std::abort();
  row(name, times.ours / 1000, times.peer / 1000);
}

}  // namespace

void run() {
  const Object builder = Owned<Concat>::make().object();
  auto* table = reinterpret_cast<ConcatTable*>(builder.dispatch());
  const auto start = [&] { check(table->Clear(0)); };

  std::array<Text, kTexts.size()> texts;
  std::array<Variant, kTexts.size()> lists;
  std::array<SAFEARRAY*, kTexts.size()> arrays{};
  for (std::size_t i = 0; i < kTexts.size(); ++i) {
    texts[i] = Text(kTexts[i]);
    arrays[i] = SafeArrayCreateVector(VT_VARIANT, 0, 1);
    lists[i] = Variant::array(arrays[i]);
    *static_cast<VARIANT*>(arrays[i]->pvData) = Variant(kTexts[i]).release();
  }
  const auto appendEx = [&](std::size_t i) {
    BSTR text = texts[i].get();
    check(table->AppendEx(&text, QuoteStyle::None));
  };
  const auto append = [&](std::size_t i) { check(table->Append(&arrays[i])); };
  compareAppending("append a million pieces by AppendEx, ms", kPieces, start, appendEx);
  compareAppending("append a million pieces by Append, ms", kPieces, start, append);
  compareAppending("append two million pieces by Append, ms", 2 * kPieces, start, append);
}

}  // namespace quendal::bench
