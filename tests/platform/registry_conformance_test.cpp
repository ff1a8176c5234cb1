// The registry calls' rules, checked against whichever backend this build has:
// advapi32 itself under wine, the .reg file natively (pointed at a temporary
// file by registry_posix_test.cpp). The expectations are what advapi32 answered
// under wine 8. Each test works below its own fresh key, removed afterwards.
#include "platform/registry.h"

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace qorvane::registry {
namespace {

using namespace std::string_literals;

constexpr Result kBadPathname = 161;
constexpr Result kKeyDeleted = 1018;
constexpr Handle kNeverIssued = 0x3FFFFFF0;

// Children first, each opened through its parent's handle, as the add-in does.
void DeleteTree(Handle parent, const std::string& name) {
  Handle key = 0;
  if (OpenKeyEx(parent, name, kKeyAllAccess, key) != kSuccess) return;
  char child[256];
  for (std::uint32_t length = sizeof child; EnumKeyEx(key, 0, child, &length) == kSuccess; length = sizeof child) {
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
    CloseKey(root_);
    DeleteTree(kCurrentUser, path_);
    Handle gone = 0;
    EXPECT_EQ(OpenKeyEx(kCurrentUser, path_, kKeyRead, gone), kFileNotFound);
  }

  // Handles the tests open stay open: the deleted tree makes them stale.
  Handle Create(const std::string& subKey, std::uint32_t access = kKeyAllAccess, Handle parent = 0) {
    Handle key = 0;
    std::uint32_t disposition = 0;
    EXPECT_EQ(CreateKeyEx(parent ? parent : root_, subKey, access, key, disposition), kSuccess) << subKey;
    return key;
  }
  Result Open(const std::string& subKey, std::uint32_t access, Handle& key) {
    return OpenKeyEx(root_, subKey, access, key);
  }
  static Result SetText(Handle key, const std::string& name, const std::string& text) {
    return SetValueEx(key, name, kRegSz, reinterpret_cast<const std::uint8_t*>(text.c_str()),
                      static_cast<std::uint32_t>(text.size() + 1));
  }
  static std::string Text(Handle key, const std::string& name) {
    char buffer[256] = {};
    std::uint32_t size = sizeof buffer;
    const Result result = QueryValueEx(key, name, nullptr, reinterpret_cast<std::uint8_t*>(buffer), &size);
    return result == kSuccess ? buffer : "<missing>";
  }
  static std::vector<std::string> Names(Handle key, bool values) {
    std::vector<std::string> names;
    char name[512];
    Result result = kSuccess;
    for (std::uint32_t index = 0, length = sizeof name;
         (result = values ? EnumValue(key, index, name, &length) : EnumKeyEx(key, index, name, &length)) == kSuccess;
         ++index, length = sizeof name) {
      EXPECT_EQ(length, std::strlen(name));
      names.emplace_back(name);
    }
    EXPECT_EQ(result, kNoMoreItems);
    return names;
  }

  std::string path_;
  Handle root_ = 0;
};

TEST_F(Registry, StoredBytesAndSizesFollowAdvapi32) {
  const std::string big(299, 'q');
  // buffer 0: data null, size only; read: the buffer's first bytes afterwards, it starts as X's.
  const struct { const char* what; std::uint32_t type; std::string data; std::uint32_t setSize, buffer;
                 Result result; std::uint32_t size; std::string read; } cases[] = {
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

// Every result code the add-in can meet, one row per rule; rows run in order.
TEST_F(Registry, ResultCodes) {
  ASSERT_EQ(SetText(root_, "present", "here"), kSuccess);
  ASSERT_EQ(SetText(root_, "victim", "v"), kSuccess);
  const Handle parent = Create("Parent");  // one sub-key, one value
  Create("Child", kKeyAllAccess, parent);
  ASSERT_EQ(SetText(parent, "only", "x"), kSuccess);
  char name[64];
  std::uint8_t data[8];
  std::uint32_t length = 0, size = 0, type = 0, disposition = 0;
  Handle key = 0;
  const auto query = [&](Handle h, const char* value) { return QueryValueEx(h, value, &type, data, &(size = 8)); };
  const auto create = [&](Handle h, const char* subKey) {
    const Result result = CreateKeyEx(h, subKey, kKeyAllAccess, key, disposition);
    if (result == kSuccess) CloseKey(key);
    return result;
  };
  const struct { const char* what; std::function<Result()> call; Result result; } cases[] = {
      {"missing value", [&] { return query(root_, "absent"); }, kFileNotFound},
      {"default value never set", [&] { return query(root_, ""); }, kFileNotFound},
      {"query with data but no size", [&] { return QueryValueEx(root_, "present", &type, data, nullptr); },
       kInvalidParameter},
      {"query type only", [&] { return QueryValueEx(root_, "present", &type, nullptr, nullptr); }, kSuccess},
      {"open a missing key", [&] { return Open("Nope", kKeyRead, key); }, kFileNotFound},
      {"open below a missing key", [&] { return Open("Nope\\Child", kKeyRead, key); }, kFileNotFound},
      {"delete a key with sub-keys", [&] { return DeleteKey(root_, "Parent"); }, kAccessDenied},
      {"delete a missing key", [&] { return DeleteKey(root_, "Nope"); }, kFileNotFound},
      {"delete below a missing key", [&] { return DeleteKey(root_, "Nope\\Child"); }, kFileNotFound},
      {"delete a missing value", [&] { return DeleteValue(root_, "absent"); }, kFileNotFound},
      {"delete a hive", [&] { return DeleteKey(kCurrentUser, ""); }, kAccessDenied},
      {"close the hives", [&] { return CloseKey(kCurrentUser) | CloseKey(kLocalMachine) | CloseKey(kClassesRoot); },
       kSuccess},
      {"flush an open key and a hive", [&] { return FlushKey(root_) | FlushKey(kCurrentUser); }, kSuccess},
      {"open a path with a leading \\", [&] { return Open("\\Parent", kKeyRead, key); }, kBadPathname},
      {"create a path with a leading \\", [&] { return create(root_, "\\x"); }, kBadPathname},
      {"delete a path with a leading \\", [&] { return DeleteKey(root_, "\\Parent"); }, kBadPathname},
      {"keys past the end", [&] { return EnumKeyEx(parent, 1, name, &(length = sizeof name)); }, kNoMoreItems},
      {"values past the end", [&] { return EnumValue(parent, 1, name, &(length = sizeof name)); }, kNoMoreItems},
      {"keys past the end, no room", [&] { return EnumKeyEx(parent, 1, name, &(length = 0)); }, kNoMoreItems},
      {"set through a key created for reading", [&] { return SetText(Create("ReadOnly", kKeyRead), "x", "y"); },
       kAccessDenied},
  };
  for (const auto& c : cases) EXPECT_EQ(c.call(), c.result) << c.what;

  // The same calls through a handle opened with the given access, then
  // through handles that are not open or whose key is gone.
  using Call = std::function<Result(Handle)>;
  const Call set = [&](Handle h) { return SetText(h, "written", "w"); };
  const Call get = [&](Handle h) { return query(h, "present"); };
  const Call unset = [&](Handle h) { return DeleteValue(h, "victim"); };
  const Call keys = [&](Handle h) { return EnumKeyEx(h, 0, name, &(length = sizeof name)); };
  const Call values = [&](Handle h) { return EnumValue(h, 0, name, &(length = sizeof name)); };
  const Call made = [&](Handle h) { return create(h, "Made"); };
  const Call flush = [&](Handle h) { return FlushKey(h); };
  const struct { const char* what; std::uint32_t access; const Call& call; Result result; } access[] = {
      {"read: set", kKeyRead, set, kAccessDenied},           {"read: delete value", kKeyRead, unset, kAccessDenied},
      {"read: query", kKeyRead, get, kSuccess},              {"read: flush", kKeyRead, flush, kSuccess},
      {"read: create (wine does not check the parent)", kKeyRead, made, kSuccess},
      {"set value: set", 0x0002, set, kSuccess},             {"set value: delete value", 0x0002, unset, kSuccess},
      {"set value: query", 0x0002, get, kAccessDenied},      {"set value: values", 0x0002, values, kAccessDenied},
      {"query value: values", 0x0001, values, kSuccess},     {"query value: keys", 0x0001, keys, kAccessDenied},
      {"enumerate: keys", 0x0008, keys, kSuccess},           {"enumerate: values", 0x0008, values, kAccessDenied},
      {"create sub-key: create", 0x0004, made, kSuccess},    {"create sub-key: set", 0x0004, set, kAccessDenied},
      {"nothing: query", 0, get, kAccessDenied},             {"write: query", kKeyWrite, get, kSuccess},
      {"generic read: set", 0x80000000u, set, kAccessDenied}, {"generic read: query", 0x80000000u, get, kSuccess},
      {"generic write: set", 0x40000000u, set, kSuccess},    {"generic write: query", 0x40000000u, get, kAccessDenied},
  };
  for (const auto& c : access) {
    ASSERT_EQ(OpenKeyEx(kCurrentUser, path_, c.access, key), kSuccess) << c.what;
    EXPECT_EQ(c.call(key), c.result) << c.what;
  }
  const Handle gone = Create("Gone");
  const Handle outer = Create("Outer");
  const Handle inner = Create("Outer\\Inner");
  ASSERT_EQ(DeleteKey(root_, "Gone"), kSuccess);
  ASSERT_EQ(DeleteKey(outer, "Inner"), kSuccess);  // through its parent's handle
  Handle closed = 0;  // closed last: Windows hands a closed handle's number out again
  ASSERT_EQ(OpenKeyEx(root_, "", kKeyRead, closed), kSuccess);
  ASSERT_EQ(CloseKey(closed), kSuccess);
  const Call open = [&](Handle h) { return OpenKeyEx(h, "", kKeyRead, key); };
  const Call openBelow = [&](Handle h) { return OpenKeyEx(h, "x", kKeyRead, key); };
  const Call remove = [&](Handle h) { return DeleteKey(h, ""); };
  const Call removeBelow = [&](Handle h) { return DeleteKey(h, "x"); };
  const std::pair<const char*, const Call&> calls[] = {
      {"set", set},   {"query", get},       {"delete a value", unset},  {"keys", keys},  {"values", values},
      {"create", made}, {"flush", flush},   {"open itself", open},      {"open below", openBelow},
      {"delete itself", remove},            {"delete below", removeBelow},
  };
  for (const Handle h : {Handle{0}, kNeverIssued, closed, gone, inner}) {
    const Result expected = h == gone || h == inner ? kKeyDeleted : kInvalidHandle;
    for (const auto& [what, call] : calls) EXPECT_EQ(call(h), expected) << what << " through " << h;
  }
  for (const Handle h : {Handle{0}, kNeverIssued, closed}) EXPECT_EQ(CloseKey(h), kInvalidHandle) << "close " << h;
  Create("Gone");
  EXPECT_EQ(SetText(gone, "x", "y"), kKeyDeleted) << "a new key of the same name is another key";
  EXPECT_EQ(CloseKey(gone), kSuccess);
}

// Names match in any case but keep the spelling they were made with, and
// enumerate in case-folded order, the default value (the empty name) first.
TEST_F(Registry, NamesFoldCaseToMatchAndToOrder) {
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
  const Handle child = Create("ab_\\Child");
  EXPECT_EQ(DeleteValue(root_, "zZ"), kSuccess);
  EXPECT_EQ(Text(root_, "ZZ"), "<missing>");
  EXPECT_EQ(DeleteKey(root_, "aB_\\CHILD"), kSuccess);
  EXPECT_EQ(SetText(child, "v", "x"), kKeyDeleted) << "deleted under another spelling";
}

TEST_F(Registry, NamesLongerThanTheBufferAreRefused) {
  const Handle key = Create("Names");
  Create("subkeyname", kKeyAllAccess, key);
  ASSERT_EQ(SetText(key, "valuename", ""), kSuccess);
  // name: what the buffer holds afterwards, "?" untouched.
  const struct { bool value; std::uint32_t room; Result result; std::uint32_t length; std::string name; } cases[] = {
      {false, 0, kMoreData, 0, "?"},     {false, 1, kMoreData, 1, "?"},    {false, 10, kMoreData, 10, "?"},
      {false, 11, kSuccess, 10, "subkeyname"},                            {false, 40, kSuccess, 10, "subkeyname"},
      {true, 0, kMoreData, 0, "?"},      {true, 1, kMoreData, 1, ""},      {true, 5, kMoreData, 5, "valu"},
      {true, 9, kMoreData, 9, "valuenam"}, {true, 10, kSuccess, 9, "valuename"}, {true, 40, kSuccess, 9, "valuename"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(::testing::Message() << (c.value ? "value" : "key") << " into " << c.room);
    char buffer[64];
    std::memset(buffer, '?', sizeof buffer);
    std::uint32_t length = c.room;
    EXPECT_EQ(c.value ? EnumValue(key, 0, buffer, &length) : EnumKeyEx(key, 0, buffer, &length), c.result);
    EXPECT_EQ(length, c.length);
    EXPECT_EQ(std::string(buffer, c.name.size() + (c.name == "?" ? 0 : 1)), c.name == "?" ? "?" : c.name + '\0');
  }
}

// The rows build on each other: each path is created after the ones above.
TEST_F(Registry, PathsCreateTheirParentsAndAnEmptyOneIsTheKeyItself) {
  const struct { const char* create; std::uint32_t disposition; const char* thenOpens; } cases[] = {
      {"New", kCreatedNewKey, "New"}, {"New", kOpenedExistingKey, "new"}, {"NEW", kOpenedExistingKey, "New"},
      {"Deep\\Er\\Est", kCreatedNewKey, "Deep\\Er"}, {"Deep\\Er\\Other", kCreatedNewKey, "deep\\er\\other"},
      {"deep\\ER", kOpenedExistingKey, "Deep\\Er\\Est"}, {"Trail\\", kCreatedNewKey, "Trail"},
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
  // An empty path means the key itself: a second handle to it, or its deletion.
  ASSERT_EQ(SetText(root_, "present", "here"), kSuccess);
  Handle again = 0;
  ASSERT_EQ(Open("", kKeyAllAccess, again), kSuccess);
  EXPECT_NE(again, root_);
  EXPECT_EQ(Text(again, "present"), "here");
  EXPECT_EQ(CloseKey(again), kSuccess);
  EXPECT_EQ(Text(root_, "present"), "here") << "the key outlives its second handle";
  ASSERT_EQ(DeleteKey(Create("Self"), ""), kSuccess);
  EXPECT_EQ(Open("Self", kKeyRead, again), kFileNotFound);
  EXPECT_EQ(DeleteKey(root_, "deep\\er\\est"), kSuccess) << "a path below the handle";
  EXPECT_EQ(Open("Deep\\Er", kKeyRead, again), kSuccess) << "its parent stays";
}

}  // namespace
}  // namespace qorvane::registry
