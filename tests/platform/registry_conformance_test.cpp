// The registry calls' rules, checked against whichever backend this build
// has: advapi32 itself under wine, the .reg file natively (pointed at a
// temporary file by registry_posix_test.cpp). The expectations are what
// advapi32 answered under wine 8, so both halves are held to the same codes,
// sizes and bytes. Each test works below its own fresh key,
// HKCU\Software\QorvaneTest-<random>, and removes it afterwards.
#include "platform/registry.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstring>
#include <functional>
#include <random>
#include <string>
#include <vector>

namespace qorvane::registry {
namespace {

using namespace std::string_literals;

constexpr Result kBadPathname = 161;
constexpr Result kKeyDeleted = 1018;
constexpr Handle kNeverIssued = 0x3FFFFFF0;

// Removes parent\name with everything below it, the way the add-in clears a
// settings tree: children first, each opened through its parent's handle.
void DeleteTree(Handle parent, const std::string& name) {
  Handle key = 0;
  if (OpenKeyEx(parent, name, kKeyAllAccess, key) != kSuccess) return;
  for (;;) {
    char child[256];
    std::uint32_t length = sizeof child;
    if (EnumKeyEx(key, 0, child, &length) != kSuccess) break;
    DeleteTree(key, child);
  }
  CloseKey(key);
  DeleteKey(parent, name);
}

class Registry : public ::testing::Test {
 protected:
  void SetUp() override {
    path_ = "Software\\QorvaneTest-" + std::to_string(std::random_device()());
    std::uint32_t disposition = 0;
    ASSERT_EQ(CreateKeyEx(kCurrentUser, path_, kKeyAllAccess, root_, disposition), kSuccess);
    ASSERT_EQ(disposition, kCreatedNewKey);
  }

  void TearDown() override {
    for (const Handle handle : opened_) CloseKey(handle);
    CloseKey(root_);
    DeleteTree(kCurrentUser, path_);
    Handle gone = 0;
    EXPECT_EQ(OpenKeyEx(kCurrentUser, path_, kKeyRead, gone), kFileNotFound);
  }

  Handle Create(const std::string& subKey, std::uint32_t access = kKeyAllAccess, Handle parent = 0) {
    Handle key = 0;
    std::uint32_t disposition = 0;
    EXPECT_EQ(CreateKeyEx(parent ? parent : root_, subKey, access, key, disposition), kSuccess) << subKey;
    opened_.push_back(key);
    return key;
  }

  Result Open(const std::string& subKey, std::uint32_t access, Handle& key, Handle parent = 0) {
    const Result result = OpenKeyEx(parent ? parent : root_, subKey, access, key);
    if (result == kSuccess) opened_.push_back(key);
    return result;
  }

  static Result SetText(Handle key, const std::string& name, const std::string& text) {
    return SetValueEx(key, name, kRegSz, reinterpret_cast<const std::uint8_t*>(text.c_str()),
                      static_cast<std::uint32_t>(text.size() + 1));
  }

  static std::string Text(Handle key, const std::string& name) {
    std::uint8_t buffer[256] = {};
    std::uint32_t size = sizeof buffer;
    std::uint32_t type = 0;
    if (QueryValueEx(key, name, &type, buffer, &size) != kSuccess) return "<missing>";
    return std::string(reinterpret_cast<const char*>(buffer));
  }

  static std::vector<std::string> Names(Handle key, bool values) {
    std::vector<std::string> names;
    for (std::uint32_t index = 0;; ++index) {
      char name[512];
      std::uint32_t length = sizeof name;
      const Result result = values ? EnumValue(key, index, name, &length) : EnumKeyEx(key, index, name, &length);
      if (result != kSuccess) {
        EXPECT_EQ(result, kNoMoreItems);
        return names;
      }
      EXPECT_EQ(length, std::strlen(name));
      names.emplace_back(name);
    }
  }

  std::string path_;
  Handle root_ = 0;
  std::vector<Handle> opened_;
};

TEST_F(Registry, StoredBytesAndSizesFollowAdvapi32) {
  const std::string big(299, 'q');
  const struct {
    const char* what;
    std::uint32_t type;
    std::string data;
    std::uint32_t setSize;
    std::uint32_t buffer;  // 0: data null, size only
    Result result;
    std::uint32_t size;
    std::string read;  // the buffer's first bytes afterwards; it starts as X's
  } cases[] = {
      {"C string counted without its terminator", kRegSz, "abc", 3, 100, kSuccess, 4, "abc\0X"s},
      {"  into exactly the stored size", kRegSz, "abc", 3, 4, kSuccess, 4, "abc\0X"s},
      {"  into one byte less", kRegSz, "abc", 3, 3, kMoreData, 4, "XXXX"},
      {"  size only", kRegSz, "abc", 3, 0, kSuccess, 4, ""},
      {"terminator counted", kRegSz, "abc", 4, 100, kSuccess, 4, "abc\0X"s},
      {"stored without terminator gets one when there is room", kRegSz, "abcd", 3, 100, kSuccess, 3, "abc\0X"s},
      {"  and none when there is not", kRegSz, "abcd", 3, 3, kSuccess, 3, "abcX"},
      {"  too small", kRegSz, "abcd", 3, 2, kMoreData, 3, "XXX"},
      {"two terminators kept", kRegSz, "abc\0\0"s, 5, 100, kSuccess, 5, "abc\0\0X"s},
      {"empty, no bytes", kRegSz, "", 0, 100, kSuccess, 0, "XX"},
      {"empty, its terminator", kRegSz, "", 1, 100, kSuccess, 1, "\0X"s},
      {"expandable string counts like a string", kRegExpandSz, "a%b", 3, 100, kSuccess, 4, "a%b\0X"s},
      {"binary is never terminated", kRegBinary, "abc", 3, 100, kSuccess, 3, "abcX"},
      {"no type, raw", kRegNone, "abc", 3, 100, kSuccess, 3, "abcX"},
      {"dword", kRegDword, "\x0a\0\0\0"s, 4, 100, kSuccess, 4, "\x0a\0\0\0X"s},
      {"  into three bytes", kRegDword, "\x0a\0\0\0"s, 4, 3, kMoreData, 4, "XXX"},
      {"  size only", kRegDword, "\x0a\0\0\0"s, 4, 0, kSuccess, 4, ""},
      {"  of two bytes, kept as given", kRegDword, "\x0a\0"s, 2, 100, kSuccess, 2, "\x0a\0X"s},
      {"299 characters into 256 bytes", kRegSz, big, 299, 256, kMoreData, 300, "XXXX"},
      {"  size only", kRegSz, big, 299, 0, kSuccess, 300, ""},
      {"  into 299 bytes", kRegSz, big, 299, 299, kMoreData, 300, "XXXX"},
      {"  into 300 bytes", kRegSz, big, 299, 300, kSuccess, 300, big + "\0X"s},
  };
  int index = 0;
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    const std::string name = "v" + std::to_string(index++);
    ASSERT_EQ(SetValueEx(root_, name, c.type, reinterpret_cast<const std::uint8_t*>(c.data.c_str()), c.setSize),
              kSuccess);
    std::vector<std::uint8_t> buffer(512, 'X');
    std::uint32_t type = 99;
    std::uint32_t size = c.buffer;
    EXPECT_EQ(QueryValueEx(root_, name, &type, c.buffer ? buffer.data() : nullptr, &size), c.result);
    EXPECT_EQ(type, c.type);
    EXPECT_EQ(size, c.size);
    EXPECT_EQ(std::string(buffer.begin(), buffer.begin() + static_cast<std::ptrdiff_t>(c.read.size())), c.read);
  }
}

TEST_F(Registry, ResultCodesOfTheCommonFailures) {
  ASSERT_EQ(SetText(root_, "present", "here"), kSuccess);
  Create("Parent\\Child");
  char name[64];
  std::uint32_t length = sizeof name;
  std::uint32_t type = 0;
  std::uint8_t data[8];
  Handle key = 0;
  std::uint32_t disposition = 0;
  const auto query = [&](const char* value) {
    std::uint32_t size = sizeof data;
    return QueryValueEx(root_, value, &type, data, &size);
  };
  const struct {
    const char* what;
    std::function<Result()> call;
    Result result;
  } cases[] = {
      {"missing value", [&] { return query("absent"); }, kFileNotFound},
      {"default value never set", [&] { return query(""); }, kFileNotFound},
      {"open a missing key", [&] { return Open("Nope", kKeyRead, key); }, kFileNotFound},
      {"open below a missing key", [&] { return Open("Nope\\Child", kKeyRead, key); }, kFileNotFound},
      {"delete a key with sub-keys", [&] { return DeleteKey(root_, "Parent"); }, kAccessDenied},
      {"delete a missing key", [&] { return DeleteKey(root_, "Nope"); }, kFileNotFound},
      {"delete below a missing key", [&] { return DeleteKey(root_, "Nope\\Child"); }, kFileNotFound},
      {"delete a missing value", [&] { return DeleteValue(root_, "absent"); }, kFileNotFound},
      {"delete a hive", [&] { return DeleteKey(kCurrentUser, ""); }, kAccessDenied},
      {"close HKEY_CURRENT_USER", [&] { return CloseKey(kCurrentUser); }, kSuccess},
      {"close HKEY_LOCAL_MACHINE", [&] { return CloseKey(kLocalMachine); }, kSuccess},
      {"close HKEY_CLASSES_ROOT", [&] { return CloseKey(kClassesRoot); }, kSuccess},
      {"flush an open key", [&] { return FlushKey(root_); }, kSuccess},
      {"flush a hive", [&] { return FlushKey(kCurrentUser); }, kSuccess},
      {"open a path with a leading \\", [&] { return Open("\\Parent", kKeyRead, key); }, kBadPathname},
      {"create a path with a leading \\", [&] { return CreateKeyEx(root_, "\\x", kKeyRead, key, disposition); },
       kBadPathname},
      {"delete a path with a leading \\", [&] { return DeleteKey(root_, "\\Parent"); }, kBadPathname},
      {"query with data but no size", [&] { return QueryValueEx(root_, "present", &type, data, nullptr); },
       kInvalidParameter},
      {"query type only", [&] { return QueryValueEx(root_, "present", &type, nullptr, nullptr); }, kSuccess},
      {"keys past the end", [&] { return EnumKeyEx(root_, 1, name, &(length = sizeof name)); }, kNoMoreItems},
      {"values past the end", [&] { return EnumValue(root_, 1, name, &(length = sizeof name)); }, kNoMoreItems},
      {"keys past the end, no room", [&] { return EnumKeyEx(root_, 1, name, &(length = 0)); }, kNoMoreItems},
  };
  for (const auto& c : cases) EXPECT_EQ(c.call(), c.result) << c.what;
}

TEST_F(Registry, EveryCallRefusesAHandleThatIsNotOpen) {
  char name[64];
  std::uint32_t length = sizeof name;
  std::uint8_t data[8];
  std::uint32_t size = sizeof data;
  Handle key = 0;
  std::uint32_t disposition = 0;
  const struct {
    const char* what;
    std::function<Result(Handle)> call;
  } cases[] = {
      {"close", [&](Handle h) { return CloseKey(h); }},
      {"set", [&](Handle h) { return SetText(h, "x", "y"); }},
      {"query", [&](Handle h) { return QueryValueEx(h, "x", nullptr, data, &size); }},
      {"open", [&](Handle h) { return OpenKeyEx(h, "x", kKeyRead, key); }},
      {"create", [&](Handle h) { return CreateKeyEx(h, "x", kKeyRead, key, disposition); }},
      {"delete a key", [&](Handle h) { return DeleteKey(h, "x"); }},
      {"delete a value", [&](Handle h) { return DeleteValue(h, "x"); }},
      {"keys", [&](Handle h) { return EnumKeyEx(h, 0, name, &length); }},
      {"values", [&](Handle h) { return EnumValue(h, 0, name, &length); }},
      {"flush", [&](Handle h) { return FlushKey(h); }},
  };
  Handle closed = 0;
  ASSERT_EQ(OpenKeyEx(root_, "", kKeyRead, closed), kSuccess);
  ASSERT_EQ(CloseKey(closed), kSuccess);
  for (const Handle handle : {Handle{0}, kNeverIssued, closed}) {
    for (const auto& c : cases) EXPECT_EQ(c.call(handle), kInvalidHandle) << c.what << " " << handle;
  }
}

TEST_F(Registry, AccessIsCheckedPerHandle) {
  ASSERT_EQ(SetText(root_, "present", "here"), kSuccess);
  Create("Sub");
  enum Call { kSet, kDeleteValue, kQuery, kValues, kKeys, kCreate, kFlush };
  const struct {
    const char* what;
    std::uint32_t access;
    Call call;
    Result result;
  } cases[] = {
      {"read: set", kKeyRead, kSet, kAccessDenied},
      {"read: delete value", kKeyRead, kDeleteValue, kAccessDenied},
      {"read: query", kKeyRead, kQuery, kSuccess},
      {"read: create (wine does not check the parent)", kKeyRead, kCreate, kSuccess},
      {"read: flush", kKeyRead, kFlush, kSuccess},
      {"set value: set", 0x0002, kSet, kSuccess},
      {"set value: delete value", 0x0002, kDeleteValue, kSuccess},
      {"set value: query", 0x0002, kQuery, kAccessDenied},
      {"set value: values", 0x0002, kValues, kAccessDenied},
      {"query value: values", 0x0001, kValues, kSuccess},
      {"query value: keys", 0x0001, kKeys, kAccessDenied},
      {"enumerate: keys", 0x0008, kKeys, kSuccess},
      {"enumerate: values", 0x0008, kValues, kAccessDenied},
      {"create sub-key: create", 0x0004, kCreate, kSuccess},
      {"create sub-key: set", 0x0004, kSet, kAccessDenied},
      {"nothing: query", 0, kQuery, kAccessDenied},
      {"generic read: set", 0x80000000u, kSet, kAccessDenied},
      {"generic read: query", 0x80000000u, kQuery, kSuccess},
      {"generic write: set", 0x40000000u, kSet, kSuccess},
      {"generic write: query", 0x40000000u, kQuery, kAccessDenied},
      {"write: query", kKeyWrite, kQuery, kSuccess},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    ASSERT_EQ(SetText(root_, "victim", "v"), kSuccess);
    Handle key = 0;
    ASSERT_EQ(Open(path_, c.access, key, kCurrentUser), kSuccess);
    char name[64];
    std::uint32_t length = sizeof name;
    std::uint32_t size = sizeof name;
    Handle made = 0;
    std::uint32_t disposition = 0;
    Result result = -1;
    switch (c.call) {
      case kSet: result = SetText(key, "written", "w"); break;
      case kDeleteValue: result = DeleteValue(key, "victim"); break;
      case kQuery: result = QueryValueEx(key, "present", nullptr, reinterpret_cast<std::uint8_t*>(name), &size); break;
      case kValues: result = EnumValue(key, 0, name, &length); break;
      case kKeys: result = EnumKeyEx(key, 0, name, &length); break;
      case kCreate:
        result = CreateKeyEx(key, "Made", kKeyAllAccess, made, disposition);
        CloseKey(made);
        break;
      case kFlush: result = FlushKey(key); break;
    }
    EXPECT_EQ(result, c.result);
  }
  const Handle readOnly = Create("ReadOnly", kKeyRead);
  EXPECT_EQ(SetText(readOnly, "x", "y"), kAccessDenied) << "a key created for reading";
}

TEST_F(Registry, NamesMatchInAnyCaseAndKeepTheirOwn) {
  ASSERT_EQ(SetText(root_, "Present", "one"), kSuccess);
  const Handle parent = Create("Parent\\Child");
  std::string upper = path_;
  for (char& c : upper) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  Handle key = 0;
  EXPECT_EQ(Open(upper + "\\PARENT\\child", kKeyRead, key, kCurrentUser), kSuccess);
  EXPECT_EQ(Text(root_, "PRESENT"), "one");
  ASSERT_EQ(SetText(root_, "PRESENT", "two"), kSuccess);
  EXPECT_EQ(Names(root_, true), std::vector<std::string>{"Present"});
  EXPECT_EQ(Text(root_, "present"), "two");
  Handle again = 0;
  std::uint32_t disposition = 0;
  ASSERT_EQ(CreateKeyEx(root_, "PARENT", kKeyAllAccess, again, disposition), kSuccess);
  CloseKey(again);
  EXPECT_EQ(disposition, kOpenedExistingKey);
  EXPECT_EQ(Names(root_, false), std::vector<std::string>{"Parent"});
  EXPECT_EQ(SetText(parent, "v", "x"), kSuccess);
  EXPECT_EQ(DeleteValue(root_, "pResent"), kSuccess);
  EXPECT_EQ(DeleteKey(root_, "parent\\CHILD"), kSuccess);
  EXPECT_EQ(SetText(parent, "v", "x"), kKeyDeleted) << "deleted under another spelling";
}

TEST_F(Registry, KeysAndValuesEnumerateInFoldedNameOrder) {
  const char* given[] = {"b", "A", "_x", "a1", "B2", "[", "~", "Z", "ab", "Ab_", "aB~", "0", "-", "zz", "^", "`", "a"};
  for (const char* name : given) {
    Create(name);
    ASSERT_EQ(SetText(root_, name, name), kSuccess);
  }
  ASSERT_EQ(SetText(root_, "", "default"), kSuccess);
  const std::vector<std::string> order = {"-", "0", "[",   "^",   "_x", "`",  "A",  "a1",
                                          "ab", "Ab_", "aB~", "b", "B2", "Z", "zz", "~"};
  EXPECT_EQ(Names(root_, false), order);
  std::vector<std::string> values = {""};
  values.insert(values.end(), order.begin(), order.end());
  EXPECT_EQ(Names(root_, true), values);
  EXPECT_EQ(Text(root_, "A"), "a") << "the later spelling wrote the same value";
}

TEST_F(Registry, NamesLongerThanTheBufferAreRefused) {
  const Handle key = Create("Names");
  Create("subkeyname", kKeyAllAccess, key);
  ASSERT_EQ(SetText(key, "valuename", ""), kSuccess);
  const struct {
    bool value;
    std::uint32_t room;
    Result result;
    std::uint32_t length;
    std::string name;  // what the buffer holds afterwards, "?" untouched
  } cases[] = {
      {false, 0, kMoreData, 0, "?"},     {false, 1, kMoreData, 1, "?"},    {false, 10, kMoreData, 10, "?"},
      {false, 11, kSuccess, 10, "subkeyname"},                            {false, 40, kSuccess, 10, "subkeyname"},
      {true, 0, kMoreData, 0, "?"},      {true, 1, kMoreData, 1, ""},      {true, 5, kMoreData, 5, "valu"},
      {true, 9, kMoreData, 9, "valuenam"}, {true, 10, kSuccess, 9, "valuename"}, {true, 40, kSuccess, 9, "valuename"},
  };
  for (const auto& c : cases) {
    char buffer[64];
    std::memset(buffer, '?', sizeof buffer);
    buffer[sizeof buffer - 1] = '\0';
    std::uint32_t length = c.room;
    const Result result = c.value ? EnumValue(key, 0, buffer, &length) : EnumKeyEx(key, 0, buffer, &length);
    EXPECT_EQ(result, c.result) << c.value << " " << c.room;
    EXPECT_EQ(length, c.length) << c.value << " " << c.room;
    EXPECT_EQ(std::string(buffer, c.name.size() + (c.name == "?" ? 0 : 1)), c.name == "?" ? "?" : c.name + '\0')
        << c.value << " " << c.room;
  }
}

// The rows build on each other: each path is created after the ones above.
TEST_F(Registry, CreateReportsNewOrExistingAndMakesParents) {
  const struct {
    const char* create;
    std::uint32_t disposition;
    const char* thenOpens;
  } cases[] = {
      {"New", kCreatedNewKey, "New"},
      {"New", kOpenedExistingKey, "new"},
      {"NEW", kOpenedExistingKey, "New"},
      {"Deep\\Er\\Est", kCreatedNewKey, "Deep\\Er"},
      {"Deep\\Er\\Other", kCreatedNewKey, "deep\\er\\other"},
      {"deep\\ER", kOpenedExistingKey, "Deep\\Er\\Est"},
      {"Trail\\", kCreatedNewKey, "Trail"},
      {"Doubled\\\\Separator", kCreatedNewKey, "Doubled\\Separator"},
  };
  for (const auto& c : cases) {
    Handle key = 0;
    std::uint32_t disposition = 0;
    ASSERT_EQ(CreateKeyEx(root_, c.create, kKeyAllAccess, key, disposition), kSuccess) << c.create;
    CloseKey(key);
    EXPECT_EQ(disposition, c.disposition) << c.create;
    EXPECT_EQ(Open(c.thenOpens, kKeyRead, key), kSuccess) << c.thenOpens;
  }
  Handle doubled = 0;
  ASSERT_EQ(Open("Doubled", kKeyRead, doubled), kSuccess);
  EXPECT_EQ(Names(doubled, false), std::vector<std::string>{"Separator"});
}

TEST_F(Registry, EmptyPathsOpenTheParentAgain) {
  ASSERT_EQ(SetText(root_, "present", "here"), kSuccess);
  Handle again = 0;
  ASSERT_EQ(OpenKeyEx(root_, "", kKeyAllAccess, again), kSuccess);
  EXPECT_NE(again, root_);
  EXPECT_EQ(Text(again, "present"), "here");
  EXPECT_EQ(CloseKey(again), kSuccess);
  EXPECT_EQ(CloseKey(again), kInvalidHandle);
  EXPECT_EQ(Text(root_, "present"), "here") << "the parent outlives its second handle";

  std::uint32_t disposition = 0;
  ASSERT_EQ(CreateKeyEx(root_, "", kKeyAllAccess, again, disposition), kSuccess);
  EXPECT_NE(again, root_);
  EXPECT_EQ(Text(again, "present"), "here");
  EXPECT_EQ(CloseKey(again), kSuccess);

  Handle hive = 0;
  ASSERT_EQ(OpenKeyEx(kCurrentUser, "", kKeyRead, hive), kSuccess);
  Handle viaHive = 0;
  ASSERT_EQ(Open(path_, kKeyRead, viaHive, hive), kSuccess);
  EXPECT_EQ(Text(viaHive, "present"), "here");
  EXPECT_EQ(CloseKey(hive), kSuccess);
}

TEST_F(Registry, HandlesOfDeletedKeysStayDeleted) {
  Handle gone = Create("Gone");
  const Handle outer = Create("Outer");
  const Handle inner = Create("Outer\\Inner");
  ASSERT_EQ(DeleteKey(root_, "Gone"), kSuccess);
  ASSERT_EQ(DeleteKey(outer, "Inner"), kSuccess);
  char name[64];
  std::uint32_t length = sizeof name;
  std::uint8_t data[8];
  std::uint32_t size = sizeof data;
  Handle key = 0;
  std::uint32_t disposition = 0;
  const struct {
    const char* what;
    std::function<Result()> call;
  } cases[] = {
      {"set", [&] { return SetText(gone, "x", "y"); }},
      {"query", [&] { return QueryValueEx(gone, "x", nullptr, data, &size); }},
      {"create below", [&] { return CreateKeyEx(gone, "child", kKeyAllAccess, key, disposition); }},
      {"open itself", [&] { return OpenKeyEx(gone, "", kKeyRead, key); }},
      {"keys", [&] { return EnumKeyEx(gone, 0, name, &length); }},
      {"values", [&] { return EnumValue(gone, 0, name, &length); }},
      {"delete a value", [&] { return DeleteValue(gone, "x"); }},
      {"delete itself", [&] { return DeleteKey(gone, ""); }},
      {"flush", [&] { return FlushKey(gone); }},
      {"set through a handle whose key its parent deleted", [&] { return SetText(inner, "x", "y"); }},
  };
  for (const auto& c : cases) EXPECT_EQ(c.call(), kKeyDeleted) << c.what;
  Create("Gone");
  EXPECT_EQ(SetText(gone, "x", "y"), kKeyDeleted) << "a new key of the same name is another key";
  EXPECT_EQ(CloseKey(gone), kSuccess);
  opened_.erase(std::find(opened_.begin(), opened_.end(), gone));
}

TEST_F(Registry, DeleteWithAnEmptyPathRemovesTheKeyItself) {
  const Handle self = Create("Self");
  ASSERT_EQ(DeleteKey(self, ""), kSuccess);
  Handle key = 0;
  EXPECT_EQ(Open("Self", kKeyRead, key), kFileNotFound);
  Create("A\\B\\C");
  EXPECT_EQ(DeleteKey(root_, "a\\b\\c"), kSuccess) << "a path below the handle";
  EXPECT_EQ(Open("A\\B", kKeyRead, key), kSuccess);
}

TEST_F(Registry, DefaultValueIsTheEmptyName) {
  ASSERT_EQ(SetText(root_, "", "def"), kSuccess);
  EXPECT_EQ(Text(root_, ""), "def");
  EXPECT_EQ(Names(root_, true), std::vector<std::string>{""});
  EXPECT_EQ(DeleteValue(root_, ""), kSuccess);
  EXPECT_EQ(DeleteValue(root_, ""), kFileNotFound);
}

TEST_F(Registry, OddNamesAndDataReadBack) {
  const std::vector<std::string> names = {"a=\"b\\c", "@", "[x]", "x=y", " spaced ", "semi;colon", "Grüße"};
  for (const std::string& name : names) {
    ASSERT_EQ(SetText(root_, name, "for " + name), kSuccess) << name;
    Create(name + "]key");
  }
  for (const std::string& name : names) {
    EXPECT_EQ(Text(root_, name), "for " + name);
    Handle key = 0;
    EXPECT_EQ(Open(name + "]key", kKeyRead, key), kSuccess) << name;
  }
  EXPECT_EQ(Names(root_, true).size(), names.size());
}

}  // namespace
}  // namespace qorvane::registry
