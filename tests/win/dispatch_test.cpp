// Late-bound calls against a real automation object of the system
// (Scripting.Dictionary): argument order, puts with an index, puts by
// reference, the shared name cache, and failures as the runtime numbers them.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <tuple>

#include "base/runtime_error.h"
#include "win/com/apartment.h"
#include "win/com/dispatch.h"

namespace qorvane::com {
namespace {

class DispatchTest : public ::testing::Test {
 protected:
  Dispatch NewDictionary() {
    CLSID clsid{};
    EXPECT_EQ(CLSIDFromProgID(L"Scripting.Dictionary", &clsid), S_OK);
    ComPtr<IDispatch> object;
    EXPECT_EQ(CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                               reinterpret_cast<void**>(object.put())),
              S_OK);
    return Dispatch(object, type_);
  }

  ComApartment apartment_;
  DispatchType type_{"Dictionary"};
};

TEST_F(DispatchTest, ArgumentsGoInDocumentedOrderAndPutsTakeTheirIndex) {
  const Dispatch dictionary = NewDictionary();
  dictionary.Call("Add", {"first", 1L});
  dictionary.Call("Add", {"second", "two"});
  EXPECT_EQ(dictionary.Get("Count").ToLong(), 2);
  EXPECT_EQ(dictionary.Get("Item", {"second"}).ToText(), "two");
  dictionary.Put("Item", 2.5, {"first"});
  EXPECT_EQ(dictionary.Get("Item", {"first"}).ToDouble(), 2.5) << "the value is the named put argument";
  EXPECT_TRUE(dictionary.Get("Exists", {"first"}).ToBool());
  EXPECT_FALSE(dictionary.Get("Exists", {"third"}).ToBool());

  const Dispatch inner = NewDictionary();
  inner.Call("Add", {"k", "inner value"});
  dictionary.Put("Item", inner.Object(), {"object"});
  const Dispatch stored(dictionary.Get("Item", {"object"}).ToObject(), type_);
  EXPECT_EQ(stored.get(), inner.get());
  EXPECT_EQ(stored.Get("Item", {"k"}).ToText(), "inner value");
}

// What an object was asked: flags, named arguments, the arguments in the
// order IDispatch passes them (last first), and "->" when a result was
// asked for, as text.
class RecordingObject final : public IDispatch {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    if (!IsEqualIID(iid, IID_IUnknown) && !IsEqualIID(iid, IID_IDispatch)) return *object = nullptr, E_NOINTERFACE;
    *object = this;
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++refs; }
  ULONG STDMETHODCALLTYPE Release() override { return --refs; }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override { return *count = 0, S_OK; }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID* id) override {
    *id = 7;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD flags, DISPPARAMS* params, VARIANT* result, EXCEPINFO*,
                                   UINT*) override {
    asked = std::to_string(flags) + " named " + std::to_string(params->cNamedArgs);
    if (params->cNamedArgs) asked += params->rgdispidNamedArgs[0] == DISPID_PROPERTYPUT ? " put" : " other";
    for (UINT i = 0; i < params->cArgs; ++i) {
      const ScopedVariant arg = ScopedVariant::CopyOf(params->rgvarg[i]);
      asked += arg.Type() == VT_ERROR ? " missing" : arg.Type() == VT_DISPATCH ? " object" : " " + arg.ToText();
    }
    if (result) {
      asked += " ->";
      *result = ScopedVariant(true).Detach();
    }
    return S_OK;
  }
  ULONG refs = 1;
  std::string asked;
};

TEST_F(DispatchTest, CallsPassFlagsAndArgumentsLastFirst) {
  RecordingObject object;
  const Dispatch recorded(ComPtr<IDispatch>(&object), type_);
  // What the call sends, as the object records it.
  const std::tuple<const char*, std::function<void()>, std::string> cases[] = {
      {"get", [&] { recorded.Get("Item", {1L, "b"}); }, "3 named 0 b 1 ->"},
      {"method with a left-out argument", [&] { recorded.Call("Add", {1L, ScopedVariant::Missing(), "c"}); },
       "1 named 0 c missing 1"},
      {"put with an index", [&] { recorded.Put("Item", "v", {"k"}); }, "4 named 1 put v k"},
      {"put by reference", [&] { recorded.PutRef("CurrentFolder", &object); }, "8 named 1 put object"},
  };
  for (const auto& [name, call, asked] : cases) {
    call();
    EXPECT_EQ(object.asked, asked) << name;
  }
  EXPECT_EQ(object.refs, 2u) << "the arguments' references were given back";
}

TEST_F(DispatchTest, ObjectsOfOneTypeShareOneLookupPerName) {
  const NameLookupCounts before = NameLookups();
  for (int i = 0; i < 50; ++i) {
    const Dispatch dictionary = NewDictionary();
    dictionary.Call("Add", {"k", i});
    EXPECT_EQ(dictionary.Get("Count").ToLong(), 1);
  }
  EXPECT_EQ(NameLookups().asked - before.asked, 100);
  EXPECT_EQ(NameLookups().resolved - before.resolved, 2) << "Add and Count, once each";
  DispatchType other("Other");
  Dispatch(NewDictionary().Object(), other).Get("Count");
  EXPECT_EQ(NameLookups().resolved - before.resolved, 3) << "another type resolves its own names";
}

TEST_F(DispatchTest, FailuresRaiseWithTheRuntimesNumbers) {
  const Dispatch dictionary = NewDictionary();
  dictionary.Call("Add", {"k", 1L});
  // The call and the number it raises.
  const std::tuple<const char*, std::function<void()>, std::int32_t> cases[] = {
      {"a key added twice (the library's own 457)", [&] { dictionary.Call("Add", {"k", 2L}); }, 457},
      {"a member it does not have", [&] { dictionary.Get("NoSuchMember"); }, err::kObjectDoesntSupport},
      {"no object", [] { Dispatch().Get("Count"); }, err::kObjectNotSet},
  };
  for (const auto& [name, call, number] : cases) {
    try {
      call();
      ADD_FAILURE() << name << ": did not raise";
    } catch (const RuntimeError& error) {
      EXPECT_EQ(error.Number(), number) << name;
      EXPECT_FALSE(error.Description().empty()) << name;
    }
  }
  // Windows' and wine's dispatch differ on which of the two they report.
  try {
    dictionary.Call("Add", {"only a key"});
    ADD_FAILURE() << "too few arguments: did not raise";
  } catch (const RuntimeError& error) {
    EXPECT_TRUE(error.Number() == err::kArgumentNotOptional || error.Number() == err::kWrongArgumentCount)
        << error.Number();
  }
  EXPECT_EQ(dictionary.Get("Count").ToLong(), 1) << "nothing the failing calls tried took effect";
}

}  // namespace
}  // namespace qorvane::com
