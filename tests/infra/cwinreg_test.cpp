// CWinReg against the registry of the platform: the POSIX file natively and
// advapi32 under wine. The same cases must hold on both.
#include "infra/cwinreg.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

#include "tests/support/registry_sandbox.h"
#include "tests/support/test_env.h"

namespace {

constexpr const char* kRoot = "Software\\QorvaneRegTest";

class CWinRegTest : public ::testing::Test {
 protected:
  qorvane::testing::ScopedRegistryKeys sandbox_{{kRoot}};
  CWinReg key_;
  void SetUp() override { ASSERT_TRUE(key_.InitForWrite(CWinReg::HKEY_CURRENT_USER, kRoot, true)); }
};

TEST_F(CWinRegTest, StringsRoundTripAlthoughTheTerminatorIsNotStored) {
  const std::string cases[] = {"abc", "", "C:\\Reports\\Weekly\\", "a;b#c", std::string(255, 'x')};
  for (const std::string& text : cases) {
    ASSERT_TRUE(key_.WriteString("s", text));
    EXPECT_EQ(key_.ReadString("s"), text) << text.size();
  }
}

TEST_F(CWinRegTest, ReadsFailRatherThanTruncate) {
  ASSERT_TRUE(key_.WriteString("long", std::string(256, 'x')));
  EXPECT_EQ(key_.ReadString("long"), "");
  EXPECT_EQ(key_.ReadString("missing"), "");
}

TEST_F(CWinRegTest, ReadTextHasNoReadBufferLimit) {
  const std::string cases[] = {"", "short", std::string(256, 'x'), std::string(70000, 'y')};
  for (const std::string& text : cases) {
    ASSERT_TRUE(key_.WriteString("t", text));
    EXPECT_EQ(key_.ReadText("t"), text) << text.size();
  }
  ASSERT_TRUE(key_.WriteLong("n", 1));
  EXPECT_EQ(key_.ReadText("n"), "") << "not a string";
  EXPECT_EQ(key_.ReadText("missing"), "");
}

TEST_F(CWinRegTest, TypesDoNotCrossOver) {
  ASSERT_TRUE(key_.WriteLong("n", 42));
  ASSERT_TRUE(key_.WriteString("s", "42"));
  EXPECT_EQ(key_.ReadString("n"), "");
  EXPECT_EQ(key_.ReadLong("s", 0), 0);
  EXPECT_EQ(key_.ReadLong("n", 0), 42);
  ASSERT_TRUE(key_.WriteLong("neg", -5));
  EXPECT_EQ(key_.ReadLong("neg", 0), -5);
  EXPECT_EQ(key_.ReadLong("missing", 7), 0) << "the second argument is ignored";
}

TEST_F(CWinRegTest, YesNoValues) {
  const struct {
    const char* stored;
    bool expected;
  } cases[] = {{"yes", true}, {"YES", true}, {"Yes", true}, {"true", false}, {"1", false}, {"no", false}, {"", false}};
  for (const auto& c : cases) {
    ASSERT_TRUE(key_.WriteString("b", c.stored));
    EXPECT_EQ(key_.ReadBool("b"), c.expected) << c.stored;
  }
  EXPECT_FALSE(key_.ReadBool("missing"));
  ASSERT_TRUE(key_.WriteBool("b", true));
  EXPECT_EQ(key_.ReadString("b"), "yes");
  ASSERT_TRUE(key_.WriteBool("b", false));
  EXPECT_EQ(key_.ReadString("b"), "no");
}

TEST_F(CWinRegTest, NamesAreCaseInsensitive) {
  ASSERT_TRUE(key_.WriteString("MixedCase", "v"));
  EXPECT_EQ(key_.ReadString("mixedcase"), "v");
  CWinReg other;
  EXPECT_TRUE(other.InitForRead(CWinReg::HKEY_CURRENT_USER, "software\\qorvaneregtest"));
  EXPECT_EQ(other.ReadString("MIXEDCASE"), "v");
}

TEST_F(CWinRegTest, EnumerationEndsWithAnEmptyName) {
  ASSERT_TRUE(key_.WriteString("b", "1"));
  ASSERT_TRUE(key_.WriteString("a", "2"));
  CWinReg sub;
  ASSERT_TRUE(sub.InitForWrite(CWinReg::HKEY_CURRENT_USER, std::string(kRoot) + "\\Zeta", true));
  ASSERT_TRUE(sub.InitForWrite(CWinReg::HKEY_CURRENT_USER, std::string(kRoot) + "\\Alpha", true));
  std::vector<std::string> values, keys;
  for (std::uint32_t i = 0; !key_.Values(i).empty(); ++i) values.push_back(key_.Values(i));
  for (std::uint32_t i = 0; !key_.Keys(i).empty(); ++i) keys.push_back(key_.Keys(i));
  std::sort(values.begin(), values.end());
  EXPECT_EQ(values, (std::vector<std::string>{"a", "b"}));
  EXPECT_EQ(keys, (std::vector<std::string>{"Alpha", "Zeta"}));
  EXPECT_EQ(key_.Keys(2), "");
  EXPECT_EQ(key_.Keys(1000), "");
}

TEST_F(CWinRegTest, RecursiveDeleteKeepsTheKeyAndItsValues) {
  for (const char* path : {"\\A\\B\\C", "\\A\\B2", "\\D"}) {
    CWinReg sub;
    ASSERT_TRUE(sub.InitForWrite(CWinReg::HKEY_CURRENT_USER, std::string(kRoot) + path, true));
    ASSERT_TRUE(sub.WriteString("v", path));
  }
  ASSERT_TRUE(key_.WriteString("own", "kept"));
  EXPECT_FALSE(key_.DeleteKey("A")) << "a key with sub-keys is not deleted directly";
  key_.DeleteAllKeys();
  EXPECT_EQ(key_.Keys(0), "");
  EXPECT_EQ(key_.ReadString("own"), "kept");
  CWinReg gone;
  EXPECT_FALSE(gone.InitForRead(CWinReg::HKEY_CURRENT_USER, std::string(kRoot) + "\\A\\B\\C"));
}

TEST_F(CWinRegTest, DeleteKeyRecRemovesTheWholeSubTree) {
  CWinReg sub;
  ASSERT_TRUE(sub.InitForWrite(CWinReg::HKEY_CURRENT_USER, std::string(kRoot) + "\\T\\U\\V", true));
  sub.CloseKey();
  EXPECT_TRUE(key_.DeleteKeyRec("T"));
  EXPECT_FALSE(sub.InitForRead(CWinReg::HKEY_CURRENT_USER, std::string(kRoot) + "\\T"));
  EXPECT_FALSE(key_.DeleteKeyRec("T")) << "nothing left to delete";
}

TEST_F(CWinRegTest, ValuesCanBeDeleted) {
  ASSERT_TRUE(key_.WriteString("x", "1"));
  EXPECT_TRUE(key_.DeleteValue("x"));
  EXPECT_FALSE(key_.DeleteValue("x"));
  EXPECT_EQ(key_.ReadString("x"), "");
  EXPECT_TRUE(key_.FlushKey());
}

TEST(CWinRegClosed, AClosedKeyFailsQuietly) {
  qorvane::testing::ScopedRegistryKeys sandbox{{kRoot}};
  CWinReg reg;
  EXPECT_TRUE(reg.CloseKey()) << "closing with nothing open succeeds";
  EXPECT_FALSE(reg.WriteString("a", "b"));
  EXPECT_EQ(reg.ReadString("a"), "");
  EXPECT_FALSE(reg.WriteLong("a", 1));
  EXPECT_EQ(reg.ReadLong("a", 0), 0);
  EXPECT_EQ(reg.Values(0), "");
  EXPECT_EQ(reg.Keys(0), "");
  EXPECT_FALSE(reg.DeleteValue("a"));
  EXPECT_FALSE(reg.InitForRead(CWinReg::HKEY_CURRENT_USER, std::string(kRoot) + "\\Missing"));
  EXPECT_FALSE(reg.IsOpen());
  EXPECT_FALSE(reg.InitForWrite(CWinReg::HKEY_CURRENT_USER, std::string(kRoot) + "\\Missing", false));
}

TEST(CWinRegClosed, AReadOnlyKeyRefusesWrites) {
  qorvane::testing::ScopedRegistryKeys sandbox{{kRoot}};
  CWinReg writer;
  ASSERT_TRUE(writer.InitForWrite(CWinReg::HKEY_CURRENT_USER, kRoot, true));
  CWinReg reader;
  ASSERT_TRUE(reader.InitForRead(CWinReg::HKEY_CURRENT_USER, kRoot));
  EXPECT_FALSE(reader.WriteString("a", "b"));
  EXPECT_EQ(writer.ReadString("a"), "");
}

}  // namespace

#ifndef _WIN32
namespace {

// The registry file of a system without a registry: a damaged file is set
// aside and the user finds that in the add-in's log.
TEST(CWinRegFile, ADamagedFileIsReportedInTheLog) {
  qorvane::testing::ScopedRegistryKeys sandbox{{kRoot}};
  qorvane::testing::ScopedLogFolder log;
  {
    std::ofstream damaged(std::getenv("QORVANE_REGISTRY_FILE"), std::ios::trunc);
    damaged << "Windows Registry Editor Version 5.00\n\n[HKEY_CURRENT_USER\\Software\\Cut";
  }
  CWinReg reg;
  EXPECT_TRUE(reg.InitForWrite(CWinReg::HKEY_CURRENT_USER, kRoot, true)) << "the registry starts empty and works";
  EXPECT_TRUE(log.LogContains("Warning : CWinReg\tregistry file ")) << log.LogText();
  EXPECT_TRUE(log.LogContains(" set aside: ")) << log.LogText();
}

// The file can hold a key whose name has a NUL in it, which the registry
// reads as the name cut there: opening it opens its parent. Deleting the
// tree above such a key must still end, deleting what it can.
TEST(CWinRegFile, DeletingATreeWithAKeyNamedAcrossANulEnds) {
  qorvane::testing::ScopedRegistryKeys sandbox{{kRoot}};
  const std::string odd("\0odd", 4);
  const auto write = [](const std::string& text) {
    std::ofstream file(std::getenv("QORVANE_REGISTRY_FILE"), std::ios::binary | std::ios::trunc);
    file << "Windows Registry Editor Version 5.00\r\n\r\n" << text;
  };
  write(std::string("[HKEY_CURRENT_USER\\") + kRoot + "\\Top\\" + odd + "]\r\n\r\n" +
        "[HKEY_CURRENT_USER\\" + kRoot + "\\Top\\Plain\\Deeper]\r\n");
  CWinReg root;
  ASSERT_TRUE(root.InitForAllAccess(CWinReg::HKEY_CURRENT_USER, kRoot, false));
  EXPECT_FALSE(root.DeleteKeyRec("Top")) << "Top keeps the key it cannot delete";
  CWinReg top;
  ASSERT_TRUE(top.InitForRead(CWinReg::HKEY_CURRENT_USER, std::string(kRoot) + "\\Top"));
  EXPECT_EQ(top.Keys(0), odd);
  EXPECT_EQ(top.Keys(1), "") << "Plain and what is below it are gone";
  write("");  // the odd key would stay in every later test's way
}

}  // namespace
#endif
