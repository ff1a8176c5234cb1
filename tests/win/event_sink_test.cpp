// Event sinks as a source sees them: the interfaces they answer, events by
// DISPID with arguments in declared order, a by-reference Cancel written
// back in both forms sources use, handlers' failures kept inside, and no
// events after the connection let go. Also errors reported to COM callers
// and read back from them.
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <tuple>
#include <vector>

#include "base/runtime_error.h"
#include "win/com/apartment.h"
#include "win/com/error.h"
#include "win/com/event_sink.h"

namespace qorvane::com {
namespace {

// {0006302C-0000-0000-C000-000000000046}, the application's events.
constexpr IID kEvents = {0x0006302C, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
constexpr DISPID kItemSend = 0xF002;

class RecordingSink final : public EventSink {
 public:
  RecordingSink() : EventSink(kEvents) {}
  std::vector<std::string> heard;
  bool cancel = false;
  bool fail = false;

 protected:
  void OnEvent(DISPID id, const DispatchArgs& args) override {
    if (fail) throw std::runtime_error("handler failed");
    if (id != kItemSend) return;
    heard.push_back(args.Text(0) + (args.Bool(1) ? " (cancelled before)" : ""));
    if (cancel) args.SetBool(1, true);
  }
};

// Raises ItemSend(subject, cancel) the way a source does: arguments last first.
HRESULT Raise(IDispatch* sink, const std::string& subject, VARIANTARG cancel, DISPID id = kItemSend) {
  const ScopedVariant text(subject);
  VARIANTARG args[] = {cancel, text.get()};
  DISPPARAMS params{args, nullptr, 2, 0};
  return sink->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &params, nullptr, nullptr, nullptr);
}

class EventSinkTest : public ::testing::Test {
 protected:
  ComApartment apartment_;
  ComPtr<RecordingSink> sink_{new RecordingSink};
};

TEST_F(EventSinkTest, AnswersTheEventInterfaceAndIDispatchOnly) {
  // {00063079-...}: the inspectors' events, another interface.
  constexpr IID kOtherEvents = {0x00063079, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
  const std::tuple<const char*, IID, bool> cases[] = {{"IUnknown", IID_IUnknown, true},
                                                      {"IDispatch", IID_IDispatch, true},
                                                      {"its events", kEvents, true},
                                                      {"other events", kOtherEvents, false},
                                                      {"IConnectionPoint", IID_IConnectionPoint, false}};
  for (const auto& [name, iid, answers] : cases) {
    EXPECT_EQ(static_cast<bool>(ComPtr<IUnknown>(sink_.get()).As<IUnknown>(iid)), answers) << name;
  }
}

TEST_F(EventSinkTest, CancelIsWrittenBackThroughEitherKindOfReference) {
  for (const bool asVariant : {false, true}) {
    SCOPED_TRACE(asVariant ? "VT_VARIANT|VT_BYREF" : "VT_BOOL|VT_BYREF");
    for (const bool cancel : {false, true}) {
      sink_->cancel = cancel;
      VARIANT_BOOL flag = VARIANT_FALSE;
      const ScopedVariant inner = ScopedVariant::BoolRef(&flag);
      const ScopedVariant holder(false);
      VARIANTARG byRef = inner.get();
      if (asVariant) {
        byRef.vt = VT_VARIANT | VT_BYREF;
        byRef.pvarVal = const_cast<VARIANT*>(&holder.get());
      }
      EXPECT_EQ(Raise(sink_.get(), "report", byRef), S_OK);
      const bool written = asVariant ? holder.ToBool() : flag != VARIANT_FALSE;
      EXPECT_EQ(written, cancel);
    }
  }
  EXPECT_EQ(sink_->heard, (std::vector<std::string>{"report", "report", "report", "report"}));
}

TEST_F(EventSinkTest, OtherEventsFailuresAndDetachedSinksStayQuiet) {
  VARIANT_BOOL flag = VARIANT_FALSE;
  EXPECT_EQ(Raise(sink_.get(), "not ours", ScopedVariant::BoolRef(&flag).get(), 0xF001), S_OK);
  sink_->fail = true;
  EXPECT_EQ(Raise(sink_.get(), "failing", ScopedVariant::BoolRef(&flag).get()), S_OK)
      << "a handler's failure never reaches the source";
  sink_->fail = false;
  sink_->Detach();
  EXPECT_EQ(Raise(sink_.get(), "late", ScopedVariant::BoolRef(&flag).get()), S_OK);
  EXPECT_TRUE(sink_->heard.empty());
}

TEST_F(EventSinkTest, ConnectingToAnObjectWithoutEventsRaises) {
  CLSID clsid{};
  ASSERT_EQ(CLSIDFromProgID(L"Scripting.Dictionary", &clsid), S_OK);
  ComPtr<IUnknown> plain;
  ASSERT_EQ(CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown, reinterpret_cast<void**>(plain.put())),
            S_OK);
  EXPECT_THROW(Connect(plain.get(), sink_), RuntimeError);
  EXPECT_THROW(Connect(nullptr, sink_), RuntimeError);
}

TEST(ErrorTest, RuntimeErrorsCrossToACallerAndBackWithTheirNumbers) {
  // The number raised on one side, and the HRESULT the caller gets in EXCEPINFO.
  const std::tuple<std::int32_t, HRESULT> cases[] = {{err::kTypeMismatch, static_cast<HRESULT>(0x800A000D)},
                                                     {err::kObjectNotSet, static_cast<HRESULT>(0x800A005B)},
                                                     {-2147221233, static_cast<HRESULT>(0x8004010F)},
                                                     {-2147352567, DISP_E_EXCEPTION}};
  for (const auto& [number, hr] : cases) {
    SCOPED_TRACE(number);
    EXCEPINFO info{};
    EXPECT_EQ(ReportError(RuntimeError(number, "said so"), &info, "Test"), DISP_E_EXCEPTION);
    EXPECT_EQ(info.scode, hr);
    try {
      RaiseException(info);
    } catch (const RuntimeError& error) {
      EXPECT_EQ(error.Number(), number);
      EXPECT_EQ(error.Description(), "said so");
    }
    EXPECT_EQ(info.bstrDescription, nullptr) << "the strings were freed";
  }
}

TEST(ErrorTest, ReturnedHresultsTakeTheRuntimesNumbers) {
  const std::tuple<HRESULT, std::int32_t> cases[] = {
      {DISP_E_TYPEMISMATCH, err::kTypeMismatch}, {DISP_E_UNKNOWNNAME, err::kObjectDoesntSupport},
      {REGDB_E_CLASSNOTREG, err::kCannotCreateObject}, {static_cast<HRESULT>(0x800A01C9), 457},
      {static_cast<HRESULT>(0x8004010F), -2147221233}, {E_FAIL, -2147467259}};
  for (const auto& [hr, number] : cases) EXPECT_EQ(RuntimeNumberOf(hr), number) << std::hex << hr;
}

}  // namespace
}  // namespace qorvane::com
