// The entry point's messages: the commands it registers and removes, and the linker calls.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "frame/BlockPriceCmd.h"
#include "frame/CalcPriceCmd.h"
#include "frame/RefreshTablesCmd.h"
#include "frame/TarnwickEntry.h"
#include "host/api/acrxregistry.h"

namespace {

AcEdCommandStack& Stack() {
    return *AcRxCast<AcEdCommandStack>(acrxSysRegistry()->at(ACRX_COMMAND_DOCK));
}

AcRxDynamicLinker& Linker() {
    return *AcRxCast<AcRxDynamicLinker>(acrxSysRegistry()->at(ACRX_DYNAMIC_LINKER));
}

std::vector<AcEdCommandStack::Command> GroupCommands() {
    std::vector<AcEdCommandStack::Command> found;
    for (const auto& command : Stack().commands()) {
        if (command.group == L"BlockPrice_Group") found.push_back(command);
    }
    return found;
}

class EntryPointTest : public ::testing::Test {
protected:
    void TearDown() override { Stack().removeGroup(L"BlockPrice_Group"); }
    int m_appId = 0;
};

TEST_F(EntryPointTest, InitRegistersTheCommandsInTableOrderAndUnlocksTheApplication) {
    ASSERT_TRUE(Linker().isApplicationLocked(&m_appId));
    EXPECT_EQ(acrxEntryPoint(AcRx::kInitAppMsg, &m_appId), AcRx::kRetOK);
    const auto commands = GroupCommands();
    ASSERT_EQ(commands.size(), 3u);
    EXPECT_EQ(commands[0].globalName, L"BlockPrice_Global");
    EXPECT_EQ(commands[0].localName, L"RZBOMT");
    EXPECT_EQ(commands[0].flags, 0);
    EXPECT_EQ(commands[0].function, &BlockPriceCmd);
    EXPECT_EQ(commands[1].globalName, L"CalcPrice_Global");
    EXPECT_EQ(commands[1].localName, L"RZBOMC");
    EXPECT_EQ(commands[1].flags, 1);
    EXPECT_EQ(commands[1].function, &CalcPriceCmd);
    EXPECT_EQ(commands[2].globalName, L"RefreshTables_Global");
    EXPECT_EQ(commands[2].localName, L"RZBOMU");
    EXPECT_EQ(commands[2].flags, 0);
    EXPECT_EQ(commands[2].function, &RefreshTablesCmd);
    EXPECT_EQ(Stack().lookup(L"RZBOMC")->function, &CalcPriceCmd);
    EXPECT_FALSE(Linker().isApplicationLocked(&m_appId));
    EXPECT_TRUE(Linker().isAppMDIAware(&m_appId));
    Linker().forgetApplication(&m_appId);
}

TEST_F(EntryPointTest, LoadingTwiceAddsTheCommandsAgainAndUnloadRemovesAllInOneCall) {
    acrxEntryPoint(AcRx::kInitAppMsg, &m_appId);
    acrxEntryPoint(AcRx::kInitAppMsg, &m_appId);
    EXPECT_EQ(GroupCommands().size(), 6u);
    EXPECT_EQ(acrxEntryPoint(AcRx::kUnloadAppMsg, &m_appId), AcRx::kRetOK);
    EXPECT_TRUE(GroupCommands().empty());
    EXPECT_EQ(Stack().lookup(L"RZBOMT"), nullptr);
    Linker().forgetApplication(&m_appId);
}

TEST_F(EntryPointTest, OtherMessagesAndAnUnloadWithoutCommandsAreAnsweredOkAndChangeNothing) {
    const auto before = Stack().commands().size();
    EXPECT_EQ(acrxEntryPoint(AcRx::kNullMsg, &m_appId), AcRx::kRetOK);
    EXPECT_EQ(acrxEntryPoint(static_cast<AcRx::AppMsgCode>(7), &m_appId), AcRx::kRetOK);
    EXPECT_EQ(acrxEntryPoint(AcRx::kUnloadAppMsg, &m_appId), AcRx::kRetOK);
    EXPECT_EQ(Stack().commands().size(), before);
    EXPECT_TRUE(Linker().isApplicationLocked(&m_appId));
}

}  // namespace
