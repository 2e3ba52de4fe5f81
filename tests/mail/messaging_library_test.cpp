#include "mail/messaging_library.h"

#include <gtest/gtest.h>

#include "platform/errors.h"
#include "platform/system.h"
#include "tests/support/agent_test.h"

namespace qorv {
namespace {

using namespace test;
using Names = std::vector<std::string>;

class MessagingLibraryTest : public AgentTest {
 protected:
  MessagingLibraryTest() { observeCalls(); }
};

using Layer = MessagingLibraryTest;

constexpr HRESULT kNoModule = static_cast<HRESULT>(0x8007007E);
constexpr HRESULT kNoEntry = static_cast<HRESULT>(0x8007007F);

TEST_F(Layer, loadsOnceAndKeepsTheHandle) {
  perform([] {
    EXPECT_EQ(LoadMessagingLibrary(), 0);
    const HMODULE module = messagingLibrary().module;
    EXPECT_NE(module, nullptr);
    EXPECT_EQ(LoadMessagingLibrary(), 0);
    EXPECT_EQ(messagingLibrary().module, module);
  });
  ASSERT_EQ(callNames(), Names{"LoadLibraryW"});
  EXPECT_EQ(calls()[0]["args"][0], "CEMAPI.DLL");
}

TEST_F(Layer, triesAgainAfterAFailedLoad) {
  fault("LoadLibraryW=126*1");
  perform([] {
    EXPECT_EQ(LoadMessagingLibrary(), kNoModule);
    EXPECT_EQ(LoadMessagingLibrary(), 0);
  });
}

TEST_F(Layer, tellsErrorNumbersAsResultsAndResultsAsTheyAre) {
  const auto converted = [&](const std::string& error) {
    HRESULT result = 1;
    fault("LoadLibraryW=" + error);
    perform([&] { result = LoadMessagingLibrary(); });
    clearFaults();
    return static_cast<DWORD>(result);
  };
  EXPECT_EQ(converted("126"), 0x8007007Eu);
  EXPECT_EQ(converted("0x12345"), 0x80072345u);
  EXPECT_EQ(converted("0x80004005"), 0x80004005u);
}

TEST_F(Layer, looksFunctionsUpEachTimeButForTheTwoThatItKeeps) {
  perform([] {
    for (int i = 0; i < 2; ++i) {
      EXPECT_EQ(FreeProws(nullptr), 0);
      EXPECT_EQ(MAPIFreeBuffer(nullptr), 0);
      EXPECT_GE(MAPIInitialize(nullptr), 0);
      MAPIUninitialize();
      IMAPISession* session = nullptr;
      ASSERT_EQ(MAPILogonEx(0, nullptr, nullptr, 0, &session), 0);
      session->Release();
    }
  });
  Names found;
  for (const auto& call : calls("GetProcAddressW")) found.push_back(call["args"][1]);
  EXPECT_EQ(found, (Names{"FreeProws", "MAPIFreeBuffer", "MAPIInitialize", "MAPIUninitialize", "MAPILogonEx",
                          "FreeProws", "MAPIFreeBuffer", "MAPILogonEx"}));
  EXPECT_EQ(callNames("LoadLibraryW").size(), 1u);
  EXPECT_EQ(callNames("MAPIInitialize").size(), 2u);
}

TEST_F(Layer, withoutTheLibraryEveryFunctionTellsWhyButOne) {
  fault("LoadLibraryW=126");
  IMAPISession* session = nullptr;
  perform([&] {
    EXPECT_EQ(FreeProws(nullptr), kNoModule);
    EXPECT_EQ(MAPIFreeBuffer(nullptr), kNoModule);
    EXPECT_EQ(MAPIInitialize(nullptr), kNoModule);
    MAPIUninitialize();
  });
  EXPECT_TRUE(calls("GetProcAddressW").empty());
  // The log-on asks the library that is not there: the last error is then an invalid handle's, 6.
  perform([&] { EXPECT_EQ(static_cast<DWORD>(MAPILogonEx(0, nullptr, nullptr, 0, &session)), 0x80070006u); });
  EXPECT_EQ(callNames("GetProcAddressW").size(), 1u);
  EXPECT_EQ(session, nullptr);
}

TEST_F(Layer, missingFunctionsAreToldButForTheRows) {
  fault("GetProcAddressW=127");
  IMAPISession* session = nullptr;
  perform([&] {
    EXPECT_EQ(FreeProws(nullptr), 0);
    EXPECT_EQ(MAPIFreeBuffer(nullptr), kNoEntry);
    EXPECT_EQ(MAPIInitialize(nullptr), kNoEntry);
    MAPIUninitialize();
    EXPECT_EQ(MAPILogonEx(0, nullptr, nullptr, 0, &session), kNoEntry);
  });
  EXPECT_EQ(callNames("GetProcAddressW").size(), 5u);
  EXPECT_EQ(callNames("FreeProws").size() + callNames("MAPI").size(), 0u);
}

TEST_F(Layer, aFunctionThatWasMissingIsLookedForAgain) {
  fault("GetProcAddressW=127*1");
  perform([] {
    EXPECT_EQ(MAPIInitialize(nullptr), kNoEntry);
    EXPECT_GE(MAPIInitialize(nullptr), 0);
  });
}

}  // namespace
}  // namespace qorv
