// Owned handles close what they hold exactly once: when the owner goes, on
// Reset, and not when ownership moved on.
#include <gtest/gtest.h>

#include "win/com/unique_handle.h"

namespace qorvane::com {
namespace {

HWND NewMessageWindow() {
  return CreateWindowExW(0, L"STATIC", L"test", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
}

TEST(UniqueHandleTest, WindowIsDestroyedByItsLastOwnerOnly) {
  HWND raw = nullptr;
  {
    UniqueWindow first(NewMessageWindow());
    raw = first.get();
    ASSERT_TRUE(IsWindow(raw));
    UniqueWindow second(std::move(first));
    EXPECT_FALSE(first);
    EXPECT_TRUE(IsWindow(raw)) << "moving does not destroy";
  }
  EXPECT_FALSE(IsWindow(raw));
  UniqueWindow reset(NewMessageWindow());
  raw = reset.get();
  reset.Reset();
  EXPECT_FALSE(IsWindow(raw));
  EXPECT_FALSE(reset);
}

TEST(UniqueHandleTest, RegistryKeyIsClosedAndInvalidContextsAreNotActivated) {
  const wchar_t* path = L"Software\\QorvaneTests\\UniqueHandle";
  HKEY raw = nullptr;
  {
    UniqueHkey key;
    ASSERT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, path, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, key.put(), nullptr),
              ERROR_SUCCESS);
    raw = key.get();
    DWORD subKeys = 1;
    EXPECT_EQ(RegQueryInfoKeyW(raw, nullptr, nullptr, nullptr, &subKeys, nullptr, nullptr, nullptr, nullptr, nullptr,
                               nullptr, nullptr),
              ERROR_SUCCESS);
  }
  EXPECT_NE(RegQueryInfoKeyW(raw, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                             nullptr, nullptr),
            ERROR_SUCCESS)
      << "the key was closed";
  RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\QorvaneTests");

  for (HANDLE context : {static_cast<HANDLE>(nullptr), INVALID_HANDLE_VALUE}) {
    const ActivationScope scope(context);
    EXPECT_FALSE(scope.Active());
  }
  EXPECT_FALSE(UniqueActivationContext(INVALID_HANDLE_VALUE)) << "what a failed CreateActCtx gives is no context";
}

}  // namespace
}  // namespace qorvane::com
